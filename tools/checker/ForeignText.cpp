#include "tools/checker/ForeignText.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace quorvane::checker {

namespace {

constexpr int kWords = 4;
/// In the order of their bytes. None of them is an English word.
constexpr std::array<std::string_view, 56> kLittleWords{
    "ao",  "aos", "auf",   "avec", "cette", "dans", "das",  "de",    "degli", "dei",  "del", "dem",
    "der", "des", "di",    "dos",  "du",    "ein",  "eine", "einer", "el",    "em",   "est", "et",
    "gli", "il",  "ist",   "je",   "la",    "las",  "le",   "les",   "los",   "mais", "mit", "mon",
    "muy", "nao", "nicht", "nous", "os",    "ou",   "para", "por",   "pour",  "que",  "qui", "sich",
    "sur", "uma", "un",    "una",  "und",   "une",  "von",  "zum"};
static_assert(std::ranges::is_sorted(kLittleWords));

bool isAscii(std::uint8_t byte) { return byte < 128; }
bool isAnyLetter(std::uint8_t byte) {
  const auto small = static_cast<std::uint8_t>(byte | 0x20U);
  return !isAscii(byte) || (small >= 'a' && small <= 'z');
}
/// The first byte of its UTF-8 form, which is all that the text has of it.
bool isForeignLetter(std::uint8_t byte) { return byte >= 0xC3 && byte <= 0xC9; }

bool isForeign(std::span<const std::uint8_t> word) {
  std::string small;
  for (const std::uint8_t byte : word) {
    if (isForeignLetter(byte)) return true;
    small += static_cast<char>(byte | 0x20U);
  }
  return std::ranges::binary_search(kLittleWords, small);
}

}  // namespace

bool endsInForeignText(std::span<const std::uint8_t> text) {
  for (int words = 0; words < kWords; ++words) {
    while (!text.empty() && !isAnyLetter(text.back())) text = text.first(text.size() - 1);
    std::size_t start = text.size();
    while (start > 0 && isAnyLetter(text[start - 1])) --start;
    if (isForeign(text.subspan(start))) return true;
    text = text.first(start);
  }
  return false;
}

}  // namespace quorvane::checker
