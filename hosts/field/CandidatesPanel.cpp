#include "hosts/field/CandidatesPanel.h"

#include <algorithm>

#include "src/base/VirtualKeys.h"

namespace quorvane::field {
namespace {

double widthOf(const std::u16string& candidate) {
  return static_cast<double>(candidate.size() + CandidatesPanel::kPadding) *
         CandidatesPanel::kCharacterWidth;
}

}  // namespace

CandidatesPanel::CandidatesPanel(PanelSurroundings& surroundings, IMKCandidatePanelType panelType)
    : surroundings_(surroundings), panelType_(panelType) {
  surroundings_.panel = this;
}

CandidatesPanel::~CandidatesPanel() {
  if (surroundings_.panel == this) surroundings_.panel = nullptr;
}

// Asked for all the time: counted, and no more.
IMKCandidatePanelType CandidatesPanel::panelType() const {
  if (surroundings_.journal) surroundings_.journal->count();
  return panelType_;
}
bool CandidatesPanel::isVisible() const {
  if (surroundings_.journal) surroundings_.journal->count();
  return visible_;
}

void CandidatesPanel::updateCandidates() {
  record("updateCandidates");
  TextApplication* const application = surroundings_.application;
  Client* const client = application ? application->focusedClient() : nullptr;
  IMKInputController* const controller = client ? application->controller() : nullptr;
  replace(controller ? controller->candidates(client) : std::vector<std::u16string>{});
}

void CandidatesPanel::setCandidateData(const std::vector<std::u16string>& candidates) {
  quorvane::record(surroundings_.journal, "IMKCandidates setCandidateData ", candidates.size());
  replace(candidates);
}

void CandidatesPanel::show(std::uint32_t locationHint) {
  quorvane::record(surroundings_.journal, "IMKCandidates show ", locationHint);
  if (visible_) return;
  visible_ = true;
  begin();
}

void CandidatesPanel::hide() {
  record("hide");
  visible_ = false;
}

void CandidatesPanel::clearSelection() {
  record("clearSelection");
  highlighted_.reset();
}

void CandidatesPanel::moveDown(IMKInputController* /*sender*/) {
  record("moveDown");
  if (isColumn()) stepForward();
}
void CandidatesPanel::moveUp(IMKInputController* /*sender*/) {
  record("moveUp");
  if (isColumn()) stepBack();
}
void CandidatesPanel::moveLeft(IMKInputController* /*sender*/) {
  record("moveLeft");
  if (!isColumn()) stepBack();
}
void CandidatesPanel::moveRight(IMKInputController* /*sender*/) {
  record("moveRight");
  if (!isColumn()) stepForward();
}

NSRect CandidatesPanel::candidateFrame() const {
  record("candidateFrame");
  return frame_;
}

void CandidatesPanel::record(std::string_view call) const {
  quorvane::record(surroundings_.journal, "IMKCandidates ", call);
}

std::span<const std::u16string> CandidatesPanel::shown() const {
  const std::span<const std::u16string> all(candidates_);
  return all.subspan(firstShown_, std::min(kMostShown, all.size() - firstShown_));
}

void CandidatesPanel::pick(std::size_t index) {
  if (!visible_ || index >= candidates_.size() || !surroundings_.application) return;
  const NSAttributedString picked = candidates_[index];  // the list goes during the call
  surroundings_.application->callController(
      [&](IMKInputController& controller) { controller.candidateSelected(picked); });
}

bool CandidatesPanel::takeKey(const NSEvent& event) {
  constexpr std::uint32_t kModifiers = NSEventModifierFlagCommand | NSEventModifierFlagControl |
                                       NSEventModifierFlagOption | NSEventModifierFlagShift;
  const bool plainKey =
      event.type == NSEventType::KeyDown && (event.modifierFlags & kModifiers) == 0;
  if (!visible_ || !plainKey) return false;
  if (event.keyCode == (isColumn() ? kVK_DownArrow : kVK_RightArrow)) {
    stepForward();
  } else if (event.keyCode == (isColumn() ? kVK_UpArrow : kVK_LeftArrow)) {
    stepBack();
  } else {
    return false;
  }
  return true;
}

void CandidatesPanel::replace(std::vector<std::u16string> candidates) {
  candidates_ = std::move(candidates);
  highlighted_.reset();
  firstShown_ = 0;
  if (visible_) begin();
}

void CandidatesPanel::begin() {
  place();
  if (!candidates_.empty()) highlight(0);
}

void CandidatesPanel::stepForward() {
  const std::size_t next = highlighted_ ? *highlighted_ + 1 : 0;
  if (visible_ && next < candidates_.size()) highlight(next);
}

void CandidatesPanel::stepBack() {
  if (visible_ && highlighted_.value_or(0) > 0) highlight(*highlighted_ - 1);
}

/// Scrolls no further than it takes to see the candidate.
void CandidatesPanel::highlight(std::size_t index) {
  highlighted_ = index;
  firstShown_ = std::min(firstShown_, index);
  if (index - firstShown_ >= kMostShown) firstShown_ = index + 1 - kMostShown;
  place();
  tell();
}

void CandidatesPanel::tell() {
  TextApplication* const application = surroundings_.application;
  if (!application || !application->controller()) return;
  application->controller()->candidateSelectionChanged(candidates_[*highlighted_]);
}

void CandidatesPanel::place() {
  TextApplication* const application = surroundings_.application;
  const Document* const document = application ? application->focused() : nullptr;
  const NSRect line = document ? document->lineRectangle : NSRect{};
  const NSRect screen = screenOf(line);
  frame_ = sized();
  frame_.x = std::max(screen.x, std::min(line.x, screen.x + screen.width - frame_.width));
  const bool roomBelow = line.y - frame_.height >= screen.y;
  frame_.y = roomBelow ? line.y - frame_.height : line.y + line.height;
}

/// A column is as wide as its widest candidate, seen or not: it doesn't jump when it scrolls.
NSRect CandidatesPanel::sized() const {
  NSRect size;
  if (isColumn()) {
    for (const std::u16string& each : candidates_) size.width = std::max(size.width, widthOf(each));
    size.height = static_cast<double>(shown().size()) * kRowHeight;
  } else {
    for (const std::u16string& each : shown()) size.width += widthOf(each);
    size.height = candidates_.empty() ? 0 : kRowHeight;
  }
  return size;
}

/// The one that holds the line's beginning; failing that the first.
NSRect CandidatesPanel::screenOf(const NSRect& line) const {
  const auto screens = surroundings_.screens ? surroundings_.screens() : std::span<const NSRect>();
  for (const NSRect& screen : screens) {
    const bool inside = line.x >= screen.x && line.x < screen.x + screen.width &&
                        line.y >= screen.y && line.y < screen.y + screen.height;
    if (inside) return screen;
  }
  return screens.empty() ? NSRect{} : screens.front();
}

}  // namespace quorvane::field
