#include "tools/checker/documents/CheckWindow.h"

#include <algorithm>
#include <utility>

namespace quorvane::checker {

namespace {

constexpr std::size_t kContextLines = 3;
constexpr std::size_t kListLines = 5;
constexpr std::size_t kSuggestionLines = 2;
constexpr std::size_t kContextUnits = 80;  // on either side
constexpr std::size_t kFoundColumns = 24;

std::u16string numberText(std::size_t number) { return widenedAscii(std::to_string(number)); }

void addLines(WindowText& text, std::u16string_view more, std::size_t room) {
  std::vector<std::u16string> lines = wrapped(more, kWindowColumns);
  lines.resize(room);
  text.lines.insert(text.lines.end(), lines.begin(), lines.end());
}

/// Of the same paragraph, whole words.
std::u16string before(std::u16string_view text, std::size_t end) {
  text = text.substr(0, end);
  if (const std::size_t feed = text.find_last_of(u"\n\r"); feed != text.npos) {
    text.remove_prefix(feed + 1);
  }
  if (text.size() <= kContextUnits) return std::u16string(text);
  text.remove_prefix(text.size() - kContextUnits);
  return u"\u2026" + std::u16string(text.substr(std::min(text.find(u' '), text.size())));
}
std::u16string behind(std::u16string_view text, std::size_t start) {
  text = text.substr(start);
  text = text.substr(0, text.find_first_of(u"\n\r"));
  if (text.size() <= kContextUnits) return std::u16string(text);
  const std::size_t blank = text.rfind(u' ', kContextUnits);
  return std::u16string(text.substr(0, std::min(blank, kContextUnits))) + u" \u2026";
}
/// A blank before it is what it is about.
std::u16string visible(std::u16string_view found) {
  std::u16string text = onOneLine(found);
  for (std::size_t i = 0; i < text.size() && text[i] == u' '; ++i) text[i] = u'\u2423';
  return text;
}

}  // namespace

CheckWindow::CheckWindow(std::u16string title, DocumentCheck check, bool marks)
    : title_(std::move(title)), check_(std::move(check)), marks_(marks) {}

bool CheckWindow::looking() const {
  return !check_.done() && check_.findings().size() < kMostFindings;
}

bool CheckWindow::work() {
  if (!looking()) return false;
  check_.step();
  return true;
}

WindowOutcome CheckWindow::press(char32_t key) {
  if (key == static_cast<char32_t>(WindowKey::Escape)) return WindowOutcome::Closes;
  if (looking()) return WindowOutcome::StaysOpen;
  const bool isReturn = key == static_cast<char32_t>(WindowKey::Return) ||
                        key == static_cast<char32_t>(WindowKey::Enter);
  if (decided()) return isReturn ? WindowOutcome::Closes : WindowOutcome::StaysOpen;
  if (marks_) return isReturn ? WindowOutcome::Pastes : WindowOutcome::StaysOpen;
  if (isReturn) return decide(current().suggestions.front());
  if (key == U's') return decide(std::nullopt);
  if (key == U'a') return acceptAll();
  const std::size_t digit = key >= U'1' && key <= U'9' ? key - U'0' : 0;
  if (digit == 0 || digit > offered()) return WindowOutcome::StaysOpen;
  return decide(current().suggestions[digit - 1]);
}

WindowOutcome CheckWindow::decide(std::optional<std::u16string> text) {
  decisions_.push_back(std::move(text));
  if (!decided()) return WindowOutcome::StaysOpen;
  const bool any =
      std::ranges::any_of(decisions_, [](const auto& each) { return each.has_value(); });
  return any ? WindowOutcome::Pastes : WindowOutcome::Closes;
}

WindowOutcome CheckWindow::acceptAll() {
  WindowOutcome outcome = WindowOutcome::StaysOpen;
  while (!decided()) outcome = decide(current().suggestions.front());
  return outcome;
}

std::u16string CheckWindow::textToPaste() const {
  const std::u16string& text = check_.text().units;
  return marks_ ? markedUp(text, check_.findings())
                : corrected(text, check_.findings(), decisions_);
}

WindowText CheckWindow::shown() const {
  WindowText text{title_ + heading(), u"Esc gives up", {}};
  if (looking()) return text;
  if (check_.findings().empty()) {
    text.keys = u"Esc closes";
    text.lines = {u"Nothing was found. The text stays as it is."};
    return text;
  }
  if (decided()) return text;
  if (marks_) {
    text.keys = u"Return marks them in the text  Esc gives up";
    listFindings(text);
  } else {
    text.keys = u"1-9 take  Return the first  s skips  a takes all  Esc gives up";
    showFinding(text);
  }
  return text;
}

std::u16string CheckWindow::heading() const {
  const std::size_t size = std::max<std::size_t>(check_.text().units.size(), 1);
  if (looking()) return u": " + numberText(check_.seen() * 100 / size) + u" % seen";
  const std::size_t count = check_.findings().size();
  if (count == 0) return {};
  const std::u16string all = numberText(count) + (check_.done() ? u"" : u" and more");
  return marks_ ? u": " + all + u" found"
                : u": " + numberText(decisions_.size() + 1) + u" of " + all;
}

void CheckWindow::showFinding(WindowText& text) const {
  addLines(text, context(), kContextLines);
  text.lines.emplace_back();
  listFindings(text);
  text.lines.emplace_back();
  addLines(text, choices(offered()), kSuggestionLines);
}

std::u16string CheckWindow::choices(std::size_t count) const {
  std::u16string all;
  for (std::size_t i = 0; i < count; ++i) {
    all += numberText(i + 1) + u"\u00A0" + current().suggestions[i] + u"  ";
  }
  while (all.ends_with(u' ')) all.pop_back();
  return all;
}

std::size_t CheckWindow::offered() const {
  std::size_t count = current().suggestions.size();
  while (count > 1 && wrapped(choices(count), kWindowColumns).size() > kSuggestionLines) --count;
  return count;
}

/// Those around the one in question.
void CheckWindow::listFindings(WindowText& text) const {
  const std::size_t count = check_.findings().size();
  const std::size_t room = marks_ ? kWindowLines : kListLines;
  const std::size_t before = std::min(decisions_.size(), room / 2);
  const std::size_t first = std::min(decisions_.size() - before, count - std::min(count, room));
  for (std::size_t i = first; i < std::min(count, first + room); ++i) {
    text.lines.push_back(lineOf(i));
  }
}

std::u16string CheckWindow::lineOf(std::size_t index) const {
  const Finding& finding = check_.findings()[index];
  const bool past = index < decisions_.size();
  const bool here = index == decisions_.size() && !marks_;
  std::u16string line = here ? u"> " : past ? decisions_[index] ? u"\u2713 " : u"- " : u"  ";
  std::u16string found = shortened(visible(finding.found), kFoundColumns - 1);
  found.resize(kFoundColumns, u' ');
  line += found;
  if (past && !decisions_[index]) return line + u"left as it is";
  return shortened(line + (past ? *decisions_[index] : finding.suggestions.front()),
                   kWindowColumns);
}

std::u16string CheckWindow::context() const {
  const std::u16string_view text = check_.text().units;
  const std::size_t end = current().start + current().found.size();
  return onOneLine(before(text, current().start) + u"[" + current().found + u"]" +
                   behind(text, end));
}

}  // namespace quorvane::checker
