#include "tools/checker/AutoType.h"

#include <algorithm>
#include <span>

#include "tools/checker/UserLines.h"
#include "tools/checker/WordRules.h"
#include "tools/corrections/Letters.h"

namespace quorvane::checker {

namespace {

constexpr std::size_t kLongestAbbreviation = 31;
constexpr std::size_t kLongestExpansion = 255;

bool isAbbreviation(std::string_view text) {
  return !text.empty() && text.size() <= kLongestAbbreviation &&
         std::ranges::all_of(text, [](char c) { return c > ' ' && c < 127; });
}

bool isExpansion(std::u16string_view text) {
  return !text.empty() && text.size() <= kLongestExpansion &&
         std::ranges::none_of(
             text, [](char16_t unit) { return unit < u' ' || (unit >= 0x7F && unit < 0xA0); });
}

/// False where the line is no abbreviation with its text.
bool addLine(std::string_view line, TextEncoding& encoding, Abbreviations& abbreviations) {
  const std::size_t tab = line.find('\t');
  if (tab == line.npos || !isAbbreviation(line.substr(0, tab))) return false;
  const std::string_view text = line.substr(tab + 1);
  const auto expansion = encoding.initWithData(
      {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}, NSStringEncoding::UTF8);
  if (!expansion || !isExpansion(*expansion)) return false;
  abbreviations.try_emplace(std::string(line.substr(0, tab)), *expansion);
  return true;
}

std::optional<std::u16string> expansionOf(std::string typed, const Abbreviations& abbreviations) {
  const auto found = abbreviations.find(typed);
  if (found != abbreviations.end()) return found->second;
  if (!isUpper(typed.front())) return std::nullopt;
  typed.front() = static_cast<char>(typed.front() | 0x20);
  const auto small = abbreviations.find(typed);
  if (small == abbreviations.end()) return std::nullopt;
  std::u16string text = small->second;
  if (text.front() >= u'a' && text.front() <= u'z') text.front() -= 0x20;
  return text;
}

}  // namespace

std::size_t readAbbreviations(std::string_view file, TextEncoding& encoding,
                              Abbreviations& abbreviations) {
  return forEachLine(file,
                     [&](std::string_view line) { return addLine(line, encoding, abbreviations); });
}

std::optional<Fix> findExpansion(const Typing& typing, const Abbreviations& abbreviations) {
  if (abbreviations.empty()) return std::nullopt;
  const auto place = endedRun(typing.record);
  if (!place || place->start < typing.vouchedFrom) return std::nullopt;
  const auto run = std::span(typing.record.text).subspan(place->start, place->end - place->start);
  const auto text = expansionOf({run.begin(), run.end()}, abbreviations);
  if (!text) return std::nullopt;
  return writtenOver(typing.record, place->start, place->end, *text);
}

}  // namespace quorvane::checker
