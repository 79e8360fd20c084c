#include "tools/checker/WordRules.h"

#include <algorithm>
#include <string_view>

#include "tools/checker/MacRoman.h"
#include "tools/corrections/Letters.h"

namespace quorvane::checker {

namespace {

constexpr std::uint8_t kStraightApostrophe = 39;

using Bytes = std::span<const std::uint8_t>;

bool isDigit(std::uint8_t byte) { return byte >= '0' && byte <= '9'; }
/// A byte that may stand for any letter outside ASCII.
bool isUnknown(const TextRecord& record, std::uint8_t byte) {
  return byte >= 128 && !(record.smartCharacters && isSmartChar(byte));
}
bool isApostrophe(std::uint8_t byte) {
  return byte == kStraightApostrophe || byte == kRightSingleQuote;
}
bool isWhite(std::uint8_t byte) { return isOneOf(" \t\r", byte); }

/// A hyphen isn't among these: half of a compound is no word of its own yet. The dash that it
/// becomes with another one is.
bool endsWord(std::uint8_t key) {
  return isWhite(key) || isOneOf(".,;:!?)]}\"", key) || key == kRightDoubleQuote || key == kEmDash;
}

/// Where what the key just typed has left begins. `text` isn't empty.
std::size_t beginOfEnd(Bytes text) {
  const std::size_t last = text.size() - 1;
  return last > 0 && isDashOfHyphens(text[last - 1], text[last]) ? last - 1 : last;
}

/// What glues a word to the one before it in addresses, paths, names of files and sums, and in
/// "[p]eople".
bool joinsWords(std::uint8_t byte) { return isOneOf("./\\@#_&=+~$%<>*^|`)]}:", byte); }

bool isOfRun(std::uint8_t byte) { return byte > ' ' && byte < 127 && !isOneOf("([{\"", byte); }
bool opensRun(const TextRecord& record, std::uint8_t byte) {
  return byte < 128 || (!isUnknown(record, byte) && byte != kRightSingleQuote);
}

bool isOrdinary(const TextRecord& record, Bytes word) {
  const auto ordinary = [&](std::uint8_t byte) {
    return isLetter(byte) || (isApostrophe(byte) && !isUnknown(record, byte));
  };
  return std::ranges::all_of(word, ordinary) &&
         std::ranges::none_of(word.subspan(1), isUpper<std::uint8_t>);
}

/// Letters, digits, apostrophes (39, 213), and every byte from 128 up that isn't known to be a dash
/// or a quote: its word is then known to be beyond us.
bool belongsToWord(const TextRecord& record, std::uint8_t byte) {
  return isLetter(byte) || isDigit(byte) || isApostrophe(byte) || isUnknown(record, byte);
}

bool opensSentence(Bytes before) {
  while (!before.empty() && (isOneOf(" \t\"'(", before.back()) || isSmartChar(before.back()))) {
    before = before.first(before.size() - 1);
  }
  return before.empty() || isOneOf(".!?\r", before.back());
}

}  // namespace

bool typedBoundary(const TextRecord& record) {
  return !record.text.empty() && record.key == record.text.back() &&
         !belongsToWord(record, record.key);
}

std::optional<Word> endedWord(const TextRecord& record) {
  if (!typedBoundary(record) || !endsWord(record.key)) return std::nullopt;
  const Bytes text(record.text);
  std::size_t end = beginOfEnd(text);
  std::size_t start = end;
  while (start > 0 && belongsToWord(record, text[start - 1])) --start;
  if (start == end || (start > 0 && joinsWords(text[start - 1]))) return std::nullopt;

  const bool quoted = start > 0 && text[start - 1] == kLeftSingleQuote;
  const bool opened = isApostrophe(text[start]);
  const bool closed = isApostrophe(text[end - 1]);
  if (closed != (opened || quoted)) return std::nullopt;
  if (opened) ++start;
  if (closed) --end;
  if (start >= end || !isOrdinary(record, text.subspan(start, end - start))) return std::nullopt;
  return Word{start, end, opensSentence(text.first(start)), start > 0 && text[start - 1] == '-'};
}

std::optional<Word> endedRun(const TextRecord& record) {
  if (!typedBoundary(record) || !endsWord(record.key)) return std::nullopt;
  const Bytes text(record.text);
  const std::size_t end = beginOfEnd(text);
  std::size_t start = end;
  while (start > 0 && isOfRun(text[start - 1])) --start;
  if (start == end || (start > 0 && !opensRun(record, text[start - 1]))) return std::nullopt;
  return Word{start, end, opensSentence(text.first(start)), false};
}

std::string spelling(Bytes word) {
  std::string ascii;
  for (const std::uint8_t byte : word) {
    ascii += isApostrophe(byte) ? '\'' : static_cast<char>(byte);
  }
  return ascii;
}

}  // namespace quorvane::checker
