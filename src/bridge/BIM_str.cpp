#include "src/bridge/BIM_str.h"

#include <algorithm>
#include <string_view>

namespace quorvane {
namespace {

constexpr std::uint8_t kApostrophe = 39;
constexpr std::uint8_t kTypographicApostrophe = 213;
constexpr std::array<std::uint8_t, 7> kVowels{'a', 'e', 'i', 'o', 'u', 'y', 0};
constexpr std::array<std::uint8_t, 10> kClosing{34, 41, 42, 47, 58, 93, 125, 210, 211, 0};

constexpr std::uint32_t kHexDigitsMask = 0xFFFFFFF;
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

bool isApostrophe(std::uint8_t byte) {
  return byte == kApostrophe || byte == kTypographicApostrophe;
}

template <class Convert>
std::int32_t copyAtMost(std::uint8_t* dst, const std::uint8_t* src, std::int32_t n,
                        Convert convert) {
  if (n < 1) return 0;
  std::int32_t copied = 0;
  while (copied < n) {
    const std::uint8_t byte = src[copied];
    dst[copied++] = convert(byte);
    if (byte == 0) break;
  }
  return copied - 1;
}

template <class Convert>
std::int32_t compare(const std::uint8_t* a, const std::uint8_t* b, Convert convert) {
  for (;; ++a, ++b) {
    const std::int32_t difference = convert(*a) - convert(*b);
    if (difference != 0 || *a == 0) return difference;
  }
}

std::uint8_t same(std::uint8_t byte) { return byte; }

// Cuts an ending "s", with an apostrophe before it.
std::uint32_t lengthWithoutS(const std::uint8_t* word, std::uint32_t length) {
  if (word[length - 1] != 's') return length;
  --length;
  return length - 1 >= 2 && isApostrophe(word[length - 1]) ? length - 1 : length;
}

}  // namespace

std::uint32_t strnglen(const std::uint8_t* s) {
  std::uint32_t length = 0;
  while (s[length] != 0) ++length;
  return length;
}

std::uint32_t strngcat(std::uint8_t* dst, const std::uint8_t* src) {
  const std::uint32_t length = strnglen(dst);
  return length + scrypcpy(dst + length, src);
}

std::uint32_t strcatc(std::uint8_t* s, std::uint8_t ch) {
  const std::uint32_t length = strnglen(s);
  s[length] = ch;
  s[length + 1] = 0;
  return length + 1;
}

std::uint32_t scrypcpy(std::uint8_t* dst, const std::uint8_t* src) {
  std::uint32_t length = 0;
  while ((dst[length] = src[length]) != 0) ++length;
  return length;
}

std::int32_t strngcpy(std::uint8_t* dst, const std::uint8_t* src, std::int32_t n) {
  return copyAtMost(dst, src, n, same);
}

std::int32_t strngcpylow(std::uint8_t* dst, const std::uint8_t* src, std::int32_t n) {
  return copyAtMost(dst, src, n, mklower);
}

std::int32_t STRCMPAR(const std::uint8_t* a, const std::uint8_t* b) { return compare(a, b, same); }

std::int32_t STRCMPARNOCASE(const std::uint8_t* a, const std::uint8_t* b) {
  return compare(a, b, mklower);
}

std::uint32_t strrev(std::uint8_t* s) {
  const std::uint32_t length = strnglen(s);
  std::reverse(s, s + length);
  return length;
}

std::uint8_t mklower(std::uint32_t ch) {
  return static_cast<std::uint8_t>(isuppercase(ch) != 0 ? ch | 0x20 : ch);
}

std::int32_t isuppercase(std::uint32_t ch) { return ch >= 'A' && ch <= 'Z' ? 1 : 0; }

std::int32_t Numeric(std::uint32_t ch) { return ch >= '0' && ch <= '9' ? 1 : 0; }

std::int32_t STRLSCHR(const std::uint8_t* sorted, std::uint8_t ch) {
  while (*sorted != 0 && *sorted < ch) ++sorted;
  return *sorted != 0 && *sorted == ch ? -1 : 0;
}

std::int32_t Vowelchk(std::uint8_t ch) { return STRLSCHR(kVowels.data(), ch); }

std::int32_t Clslook1(std::uint8_t ch) { return STRLSCHR(kClosing.data(), ch); }

std::int32_t Opunc(std::uint8_t ch) {
  return static_cast<std::int32_t>(std::string_view("([{").find(static_cast<char>(ch)) + 1);
}

std::int32_t Clpunc(std::uint8_t ch) {
  return static_cast<std::int32_t>(std::string_view(")]}").find(static_cast<char>(ch)) + 1);
}

std::int32_t xtol(const std::uint8_t* s, std::uint32_t n) {
  std::uint32_t value = 0;
  for (std::uint32_t i = 0; i < n; ++i) {
    if (Numeric(s[i]) != 0) value = value * 10 + (s[i] - std::uint32_t{'0'});
  }
  return static_cast<std::int32_t>(value);
}

std::int32_t dectostr(std::int64_t value, std::int32_t size, std::uint8_t* buf) {
  auto rest = static_cast<std::uint64_t>(value);
  if (value < 0) rest = 0 - rest;
  std::int32_t written = 0;
  do {
    buf[written++] = static_cast<std::uint8_t>('0' + rest % 10);
    rest /= 10;
  } while (rest != 0 && written < size);
  if (value < 0) buf[written++] = '-';
  buf[written] = 0;
  return static_cast<std::int32_t>(strrev(buf));
}

std::int32_t hextostr(std::uint64_t value, std::int32_t size, std::uint8_t* buf) {
  const auto number = static_cast<std::uint32_t>(value & kHexDigitsMask);
  std::uint32_t rest = number;
  std::int32_t written = 0;
  do {
    buf[written++] = static_cast<std::uint8_t>(kHexDigits[rest % 16]);
    rest /= 16;
  } while (rest != 0 && written < size - 1);
  if (number < 16) buf[written++] = '0';
  buf[written++] = '$';
  buf[written] = 0;
  if (rest != 0) std::fill_n(buf, written, std::uint8_t{'*'});
  return static_cast<std::int32_t>(strrev(buf));
}

std::int32_t Singular(std::uint8_t* word) {
  const std::uint32_t length = strnglen(word);
  if (length < 4) return 0;
  std::uint32_t kept = isApostrophe(word[length - 1]) ? length - 1 : length;
  kept = lengthWithoutS(word, kept);
  word[kept] = 0;
  return kept < length ? -1 : 0;
}

std::optional<CFData> Convert_ASCIITo_Unicode(Instance& instance, const std::uint8_t* text,
                                              std::uint32_t length) {
  CFData block(std::size_t{4} * length);
  const std::ptrdiff_t written =
      instance.platform().textEncoding.TECConvertText({text, length}, block.data(), block.size());
  if (written < 0 || static_cast<std::size_t>(written) > block.size()) return std::nullopt;
  block.resize(static_cast<std::size_t>(written));
  return block;
}

std::optional<std::u16string> textFromRoman(Instance& instance, std::string_view roman) {
  const auto unicode =
      Convert_ASCIITo_Unicode(instance, reinterpret_cast<const std::uint8_t*>(roman.data()),
                              static_cast<std::uint32_t>(roman.size()));
  if (!unicode) return std::nullopt;
  return instance.platform().textEncoding.initWithData(*unicode,
                                                       NSStringEncoding::UTF16LittleEndian);
}

}  // namespace quorvane
