#include "tools/checker/documents/TextWindow.h"

#include <algorithm>
#include <utility>

namespace quorvane::checker {

TextWindow::TextWindow(std::u16string title, std::u16string_view text)
    : TextWindow(std::move(title), wrapped(text, kWindowColumns)) {}

TextWindow::TextWindow(std::u16string title, std::vector<std::u16string> lines)
    : title_(std::move(title)), lines_(std::move(lines)) {
  for (std::u16string& line : lines_) line = shortened(line, kWindowColumns);
}

std::size_t TextWindow::lastFirst() const {
  return lines_.size() - std::min(lines_.size(), kWindowLines);
}

WindowText TextWindow::shown() const {
  WindowText text{title_, u"Esc closes", {}};
  if (lastFirst() > 0) text.keys = u"Up and Down move  " + text.keys;
  const auto begin = lines_.begin() + static_cast<std::ptrdiff_t>(first_);
  const std::size_t count = std::min(lines_.size() - first_, kWindowLines);
  text.lines.assign(begin, begin + static_cast<std::ptrdiff_t>(count));
  return text;
}

WindowOutcome TextWindow::press(char32_t key) {
  const std::size_t page = kWindowLines - 1;
  switch (static_cast<WindowKey>(key)) {
    case WindowKey::Escape:
    case WindowKey::Return:
    case WindowKey::Enter:
      return WindowOutcome::Closes;
    case WindowKey::Up:
      first_ -= std::min<std::size_t>(first_, 1);
      break;
    case WindowKey::PageUp:
      first_ -= std::min(first_, page);
      break;
    case WindowKey::Down:
      first_ = std::min(first_ + 1, lastFirst());
      break;
    case WindowKey::PageDown:
      first_ = std::min(first_ + page, lastFirst());
      break;
  }
  return WindowOutcome::StaysOpen;
}

}  // namespace quorvane::checker
