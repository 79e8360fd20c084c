#include "tools/checker/documents/WindowText.h"

#include <algorithm>

namespace quorvane::checker {

namespace {

bool isControlUnit(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }

/// Not within a pair of surrogates.
std::size_t cutAt(std::u16string_view text, std::size_t most) {
  if (text.size() <= most) return text.size();
  return most > 1 && (text[most] & 0xFC00) == 0xDC00 ? most - 1 : most;
}

/// Where a line of `text` ends that goes on.
std::size_t breakOf(std::u16string_view text, std::size_t columns) {
  const std::size_t blank = text.rfind(u' ', columns);
  return blank == std::u16string_view::npos || blank == 0 ? cutAt(text, columns) : blank;
}

void addParagraph(std::vector<std::u16string>& lines, std::u16string text, std::size_t columns) {
  text = onOneLine(text);
  std::u16string_view rest = text;
  while (rest.size() > columns) {
    const std::size_t end = breakOf(rest, columns);
    lines.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(rest.size(), rest.find_first_not_of(u' ', end)));
  }
  lines.emplace_back(rest);
}

}  // namespace

std::vector<std::u16string> wrapped(std::u16string_view text, std::size_t columns) {
  std::vector<std::u16string> lines;
  for (std::size_t end = 0; end != std::u16string_view::npos;) {
    end = text.find(u'\n');
    addParagraph(lines, std::u16string(text.substr(0, end)), columns);
    if (end != std::u16string_view::npos) text.remove_prefix(end + 1);
  }
  return lines;
}

std::u16string shortened(std::u16string_view text, std::size_t columns) {
  if (text.size() <= columns) return std::u16string(text);
  return std::u16string(text.substr(0, cutAt(text, columns - 1))) + u'\u2026';
}

std::u16string onOneLine(std::u16string_view text) {
  std::u16string line(text);
  std::ranges::replace_if(line, isControlUnit, u' ');
  return line;
}

}  // namespace quorvane::checker
