#include "hosts/ibus/SurroundingText.h"

#include <algorithm>
#include <utility>

#include "hosts/xkb/SymbolText.h"

namespace quorvane::ibus {
namespace {

/// A client that tells of less than this may be telling of everything.
constexpr std::size_t kCutOffAbove = 64;

bool isLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }
bool isPrivateUse(char16_t unit) { return unit >= 0xE000 && unit <= 0xF8FF; }

bool isOfWord(char16_t unit) {
  const bool letter = (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
  const bool digit = unit >= u'0' && unit <= u'9';
  constexpr std::u16string_view kNoLetters = u"\u2013\u2014\u2018\u201C\u201D\u2026\u00A0";
  return letter || digit || unit == u'\'' ||
         (unit >= 0x80 && kNoLetters.find(unit) == std::u16string_view::npos);
}

std::uint64_t unitsOf(std::u16string_view text, std::uint32_t codePoints) {
  std::uint64_t units = 0;
  for (; codePoints > 0 && units < text.size(); --codePoints) {
    ++units;
    if (units < text.size() && isLowSurrogate(text[units])) ++units;
  }
  return units;
}

std::uint64_t wordStart(std::u16string_view text, std::uint64_t place) {
  while (place > 0 && isOfWord(text[place - 1])) --place;
  return place;
}

std::uint64_t previousWordStart(std::u16string_view text, std::uint64_t place) {
  while (place > 0 && !isOfWord(text[place - 1])) --place;
  return wordStart(text, place);
}

std::u16string_view lastLine(std::u16string_view text) {
  const std::size_t feed = text.rfind(u'\n');
  return feed == std::u16string_view::npos ? text : text.substr(feed + 1);
}

}  // namespace

CaretText caretTextOf(std::string_view utf8, std::uint32_t caret, std::uint32_t anchor) {
  CaretText made{.text = xkb::fromUtf8(utf8), .caret = 0, .anchor = 0};
  made.caret = unitsOf(made.text, caret);
  made.anchor = unitsOf(made.text, anchor);
  return made;
}

CaretText caretTextOf(std::u16string text, NSRange selection) {
  return {std::move(text), selection.location + selection.length, selection.location};
}

std::uint32_t codePointsIn(std::u16string_view text) {
  return static_cast<std::uint32_t>(
      std::ranges::count_if(text, [](char16_t unit) { return !isLowSurrogate(unit); }));
}

std::optional<Edit> editBetween(const CaretText& from, const CaretText& to) {
  if (from.behind() != to.behind()) return std::nullopt;
  const std::u16string_view old = from.before();
  const std::u16string_view now = to.before();
  const auto same = std::ranges::mismatch(old, now).in1 - old.begin();
  auto common = static_cast<std::size_t>(same);
  const auto cuts = [&](std::u16string_view text) {
    return common < text.size() && isLowSurrogate(text[common]);
  };
  if (common > 0 && (cuts(old) || cuts(now))) --common;
  return Edit{old.size() - common, std::u16string(now.substr(common))};
}

bool mayBe(std::u16string_view told, std::u16string_view believed) {
  if (told == believed || told == lastLine(believed)) return true;
  return told.size() >= kCutOffAbove && believed.ends_with(told);
}

Agreement agreementOf(std::u16string_view before, std::u16string_view session) {
  std::size_t text = before.size();
  std::size_t said = session.size();
  while (text > 0 && said > 0) {
    const char16_t unit = before[text - 1];
    const bool unknown = isPrivateUse(session[said - 1]) && unit >= 0x80;
    if (unit != session[said - 1] && !unknown) break;
    text -= unknown && text > 1 && isLowSurrogate(unit) ? 2 : 1;
    --said;
  }
  return {before.size() - text, said == 0};
}

bool belongTogether(std::u16string_view before, std::u16string_view session) {
  const Agreement found = agreementOf(before, session);
  if (found.whole) return true;
  if (found.length < before.size()) return false;
  return found.length >= kCutOffAbove ||
         session.substr(0, session.size() - found.length).ends_with(u'\n');
}

bool mayReplace(std::u16string_view before, std::uint64_t start, const Agreement& agreement) {
  const std::uint64_t agreed = before.size() - agreement.length;
  const std::uint64_t word = wordStart(before, start);
  if (word < agreed) return false;
  if (previousWordStart(before, word) >= agreed) return true;
  return agreement.whole && (agreed == 0 || !isOfWord(before[agreed - 1]));
}

}  // namespace quorvane::ibus
