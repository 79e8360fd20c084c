#include "apps/desk/DeskSession.h"

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <utility>

#include "apps/desk/CheckerWindow.h"
#include "platform/UserDefaults.h"
#include "src/base/VirtualKeys.h"
#include "src/completion/AnnotationWinController.h"
#include "tools/checker/WindowFile.h"

namespace quorvane::desk {
namespace {

constexpr std::string_view kShowTranslation = "showTranslation";

/// None where no log was asked for: what is written then is lost.
desktop::Descriptor openLog(const std::string& path) {
  const char* const file = path.empty() ? "/dev/null" : path.c_str();
  desktop::Descriptor log(::open(file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
  if (!log.valid()) throw std::runtime_error("can't write the log to " + path);
  return log;
}

SystemOptions withLog(SystemOptions options, int log, bool wanted) {
  if (wanted) options.logDescriptor = log;
  return options;
}

/// The digit that takes the candidate; a blank where none does.
char labelOf(std::size_t index, const InputController& controller) {
  for (char digit = '1'; digit <= '9'; ++digit) {
    if (controller.candidateOfDigit(digit - '0') == index) return digit;
  }
  return ' ';
}

}  // namespace

DeskSession::DeskSession(const DeskOptions& options)
    : log_(openLog(options.log)),
      showAnnotation_(options.annotation),
      system_(withLog(options.system, log_.get(), !options.log.empty())) {
  system_.beforeExit = [this] { terminal_.reset(); };
  system_.textApplication().onClientCall = [this](const field::ClientCall& call) {
    facts_.called(call);
    aboutToCall(call);
  };
}

void DeskSession::run() {
  system_.run([this] { live(); });
}

void DeskSession::live() {
  terminal_.emplace(log_.get());
  fit();
  if (showAnnotation_) toggleAnnotation();
  desktop::RunLoop& loop = system_.host().runLoop();
  const auto keys =
      loop.watch(STDIN_FILENO, G_IO_IN, [this](GIOCondition condition) { readKeys(condition); });
  const auto size = loop.onSignal(SIGWINCH, [this] { fit(); });
  loop.runUntil([this] { return turn(); }, desktop::RunLoop::Deadline::max());
  terminal_.reset();
}

/// Keys are typed between the turns of the loop, never within one: typing turns it, too.
void DeskSession::readKeys(GIOCondition condition) {
  std::optional<DeskKey> key;
  while (terminal_->read(key)) {
    if (!key) continue;
    key->time = system_.host().platform().clock.GetCurrentEventTime();
    keys_.push_back(*key);
  }
  if ((condition & ~G_IO_IN) != 0) over_ = true;  // nobody is there any more
}

/// Settling turns the loop and so reads keys, too. None may be left for later: the loop sleeps
/// until something new comes.
bool DeskSession::turn() {
  system_.settle();
  while (!keys_.empty() && !ends()) {
    const DeskKey key = keys_.front();
    keys_.pop_front();
    placeLine();
    obey(key);
    system_.settle();
  }
  placeLine();
  draw();
  return ends();
}

void DeskSession::obey(const DeskKey& key) {
  const bool quits = key.command == DeskCommand::Quit;
  if (!quits && system_.front().mainWindowTakesKeys()) return pressInWindow(key);
  if (menu_ && !quits) return obeyInMenu(key);
  switch (key.command) {
    case DeskCommand::Type:
      system_.textApplication().type(key.character, key.modifiers, key.time);
      return;
    case DeskCommand::ToggleAnnotation:
      return toggleAnnotation();
    case DeskCommand::TapShift:
      return tapShift();
    case DeskCommand::Menu:
      return openMenu();
    case DeskCommand::Quit:
      over_ = true;
  }
}

void DeskSession::openMenu() {
  system_.textApplication().callController(
      [this](IMKInputController& controller) { tracking_.emplace(controller); });
  if (!tracking_ || tracking_->menu() == nullptr) return tracking_.reset();
  menu_.emplace(*tracking_->menu(),
                [this](const NSMenuItem& item) { return isEnabled(system_.controller(), item); });
}

/// A key that means nothing to a menu closes it.
void DeskSession::obeyInMenu(const DeskKey& key) {
  const bool typed = key.command == DeskCommand::Type && key.modifiers == 0;
  const MenuOutcome outcome = typed ? menu_->press(key.character) : MenuOutcome::Closes;
  if (outcome == MenuOutcome::StaysOpen) return;
  NSMenuItem* const chosen = outcome == MenuOutcome::Chooses ? menu_->highlighted() : nullptr;
  menu_.reset();
  system_.textApplication().callController([&](IMKInputController& /*controller*/) {
    if (chosen != nullptr) tracking_->choose(*chosen);
  });
  tracking_.reset();
}

/// Waits until the window has had the key: the next one may be for the document again.
void DeskSession::pressInWindow(const DeskKey& key) {
  if (key.command != DeskCommand::Type || key.modifiers != 0) return;
  constexpr Seconds kPatience{2};
  MessagePorts& ports = system_.host().platform().messagePorts;
  const auto port = ports.CFMessagePortCreateRemote(checker::kWindowKeyPort);
  if (port == nullptr) return;
  CFData reply;
  ports.CFMessagePortSendRequest(*port, static_cast<std::int32_t>(key.character), {}, kPatience,
                                 kPatience, &reply);
}

void DeskSession::tapShift() {
  for (const std::uint32_t flags : {NSEventModifierFlagShift, std::uint32_t{0}}) {
    system_.textApplication().deliver({NSEventType::FlagsChanged, flags, kVK_Shift, {}, nullptr});
  }
}

void DeskSession::toggleAnnotation() {
  UserDefaults& defaults = system_.instance().platform().userDefaults;
  defaults.setBool(!defaults.boolForKey(kShowTranslation), kShowTranslation);
}

void DeskSession::fit() {
  terminal_->resize();
  plan_ = DeskPlan(terminal_->rows(), terminal_->columns());
  if (!plan_.fits()) return;
  system_.host().screens().setFrame(plan_.screen());
  placeLine();
  placeWindows();
}

void DeskSession::placeWindows() {
  field::CandidatesPanel* const panel = system_.field().inputMethodKit.panel();
  if (panel == nullptr) return;
  panel->place();
  if (system_.field().annotationWindow.alpha() == 0) return;
  AnnotationWinController::sharedController(system_.instance())
      ->showWindow(system_.controller().calculatePositionOfTranslationWindow());
}

/// The panel hangs at the beginning of the marked text, so it must be known where the line will be
/// once that has been set.
void DeskSession::aboutToCall(const field::ClientCall& call) {
  if (call.kind != field::ClientCallKind::setMarkedText) return;
  const field::Document& document = system_.document();
  const bool given = call.replacementRange.location != NSNotFound;
  const NSRange here = document.markedRange().value_or(document.selection());
  const NSRange range = given ? call.replacementRange : here;
  std::u16string text = document.text();
  if (range.location > text.size()) return;
  text.replace(range.location, range.length, call.text);
  placeLine(text, range.location, range.location + call.text.size());
}

void DeskSession::placeLine() {
  const field::Document& document = system_.document();
  const NSRange selection = document.selection();
  placeLine(document.text(), document.markedRange().value_or(selection).location,
            selection.location + selection.length);
}

void DeskSession::placeLine(std::u16string_view text, std::size_t index, std::size_t caret) {
  if (!plan_.fits()) return;
  const TextPlace place = DeskText(plan_, text, caret).placeOf(index);
  const NSPoint corner = plan_.bottomLeftOf(place.row, place.column);
  system_.document().lineRectangle = {corner.x, corner.y, 1, kCellHeight};
}

void DeskSession::draw() {
  if (!terminal_) return;
  const field::Document& document = system_.document();
  CheckerWindow window = lookAtCheckerWindow(system_);
  terminal_->show(drawDesk(plan_, {.text = document.text(),
                                   .selection = document.selection(),
                                   .marked = document.markedRange(),
                                   .panel = panel(),
                                   .annotation = annotation(),
                                   .popup = std::move(window.popup),
                                   .window = std::move(window.own),
                                   .menus = menu_ ? menu_->views() : std::vector<MenuView>(),
                                   .facts = facts_.all(window.state)}));
}

std::optional<PanelView> DeskSession::panel() {
  const field::CandidatesPanel* const panel = system_.field().inputMethodKit.panel();
  if (panel == nullptr || !panel->isVisible()) return std::nullopt;
  const bool column = panel->panelType() == IMKCandidatePanelType::SingleColumnScrolling;
  const std::size_t first = panel->firstShown();
  PanelView view{.column = column,
                 .entries = {},
                 .frame = panel->candidateFrame(),
                 .moreBefore = first > 0,
                 .moreBehind = first + panel->shown().size() < panel->candidates().size()};
  for (std::size_t i = 0; i < panel->shown().size(); ++i) {
    const bool highlighted = panel->highlighted() == first + i;
    view.entries.push_back(
        {labelOf(first + i, system_.controller()), panel->shown()[i], highlighted});
  }
  return view;
}

std::optional<AnnotationView> DeskSession::annotation() {
  const field::AnnotationWindow& window = system_.field().annotationWindow;
  if (window.alpha() == 0) return std::nullopt;
  constexpr double kHeight = field::AnnotationWindow::kHeight;
  const NSRect frame{window.topLeft().x, window.topLeft().y - kHeight,
                     field::AnnotationWindow::kWidth, kHeight};
  return AnnotationView{frame, window.text()};
}

}  // namespace quorvane::desk
