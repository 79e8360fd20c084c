#include "tools/checker/TextTools.h"

#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <functional>

namespace quorvane::checker {

namespace {

using Text = std::u16string_view;

bool isBlank(char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'\u00A0'; }

struct Line {
  Text text;
  Text end;
};

Line takeTextLine(Text& rest) {
  const std::size_t length = std::min(rest.find_first_of(u"\r\n"), rest.size());
  const bool isPair = rest.substr(length).starts_with(u"\r\n");
  const std::size_t end = std::min(length + (isPair ? 2 : 1), rest.size());
  const Line line{rest.substr(0, length), rest.substr(length, end - length)};
  rest.remove_prefix(end);
  return line;
}

template <class Change>
std::u16string withEachLine(Text text, const Change& change) {
  std::u16string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const Line line = takeTextLine(text);
    result.append(change(line.text)).append(line.end);
  }
  return result;
}

std::u16string withSingleSpaces(Text line) {
  std::u16string result;
  for (const char16_t unit : line) {
    if (!isBlank(unit)) {
      result += unit;
    } else if (!result.empty() && result.back() != u' ') {
      result += u' ';
    }
  }
  if (result.ends_with(u' ')) result.pop_back();
  return result;
}

Text trimmed(Text line) {
  while (!line.empty() && isBlank(line.front())) line.remove_prefix(1);
  while (!line.empty() && isBlank(line.back())) line.remove_suffix(1);
  return line;
}

Text withoutMarks(Text line) {
  bool any = false;
  for (Text rest = line; !rest.empty() && (isBlank(rest.front()) || rest.front() == u'>');) {
    const bool isMark = rest.front() == u'>';
    rest.remove_prefix(1);
    if (!isMark) continue;
    any = true;
    line = rest;
  }
  if (any && !line.empty() && line.front() == u' ') line.remove_prefix(1);
  return line;
}

using CaseMapping = std::int32_t (*)(UChar* out, std::int32_t capacity, const UChar* text,
                                     std::int32_t length, const char* locale, UErrorCode* error);

/// As it is where it can't be mapped.
std::u16string mapped(Text text, CaseMapping map) {
  const auto length = static_cast<std::int32_t>(text.size());
  UErrorCode error = U_ZERO_ERROR;
  std::u16string result(text.size(), u'\0');
  std::int32_t needed = map(result.data(), length, text.data(), length, nullptr, &error);
  result.resize(static_cast<std::size_t>(std::max(needed, 0)));
  if (error == U_BUFFER_OVERFLOW_ERROR) {
    error = U_ZERO_ERROR;
    map(result.data(), needed, text.data(), length, nullptr, &error);
  }
  return U_FAILURE(error) ? std::u16string(text) : result;
}

}  // namespace

std::u16string withoutExtraSpaces(Text text) { return withEachLine(text, withSingleSpaces); }

std::u16string withJoinedLines(Text text) {
  std::u16string result;
  Text brokenBy;  // the end of the line before, while it isn't known what follows
  bool inParagraph = false;
  while (!text.empty()) {
    const Line line = takeTextLine(text);
    const Text words = trimmed(line.text);
    const bool joins = inParagraph && !words.empty();
    result.append(joins ? Text(u" ") : brokenBy).append(words);
    inParagraph = !words.empty();
    brokenBy = line.end;
  }
  return result.append(brokenBy);
}

std::u16string withoutQuoteMarks(Text text) { return withEachLine(text, withoutMarks); }
std::u16string inCapitals(Text text) { return mapped(text, u_strToUpper); }
std::u16string inSmallLetters(Text text) { return mapped(text, u_strToLower); }

std::optional<std::u16string> afterTextTool(std::uint32_t command, Text text) {
  struct Tool {
    std::uint32_t command;
    std::u16string (*change)(Text text);
  };
  static constexpr std::array kTools{
      Tool{17100, withoutExtraSpaces}, Tool{17101, withJoinedLines}, Tool{17102, withoutQuoteMarks},
      Tool{17110, inCapitals},         Tool{17111, inSmallLetters},
  };
  const auto* const tool = std::ranges::find(kTools, command, &Tool::command);
  if (tool == kTools.end()) return std::nullopt;
  return tool->change(text);
}

}  // namespace quorvane::checker
