#include "tools/checker/documents/DocumentText.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "hosts/icu/IcuTextEncoding.h"
#include "src/base/Text.h"
#include "tools/checker/MacRoman.h"

namespace quorvane::checker {

namespace {

/// In the order of their bytes, from 208 on.
constexpr std::u16string_view kSmartChars = u"\u2013\u2014\u201C\u201D\u2018\u2019";
/// The first byte of many a character; it tells nothing of its own.
constexpr std::uint8_t kSomeCharacter = 0xE2;

/// A byte of a letter beyond Latin isn't to be taken for a dash or a quote.
std::uint8_t byteOf(char16_t unit) {
  if (unit == u'\n') return '\r';
  if (const std::size_t smart = kSmartChars.find(unit); smart != std::u16string_view::npos) {
    return static_cast<std::uint8_t>(kFirstSmartChar + smart);
  }
  const std::uint8_t first = firstUtf8Byte({&unit, 1});
  return first != 0 && first < kFirstSmartChar ? first : kSomeCharacter;
}

}  // namespace

DocumentText documentTextOf(std::u16string units) {
  DocumentText text{std::move(units), {}};
  text.bytes.reserve(text.units.size());
  for (const char16_t unit : text.units) {
    std::uint8_t byte = byteOf(unit);
    // Behind a hyphen a dash stands for itself here.
    if (!text.bytes.empty() && isDashOfHyphens(text.bytes.back(), byte)) byte = kSomeCharacter;
    text.bytes.push_back(unit == 0 ? kSomeCharacter : byte);
  }
  return text;
}

std::optional<DocumentText> readDocumentText(std::string_view utf8) {
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(utf8.data()), utf8.size());
  auto units = IcuTextEncoding().initWithData(bytes, NSStringEncoding::UTF8);
  if (!units) return std::nullopt;
  return documentTextOf(std::move(*units));
}

std::u16string widenedAscii(std::string_view ascii) {
  std::u16string wide;
  for (const char c : ascii) {
    wide += static_cast<unsigned char>(c) < 128 ? static_cast<char16_t>(c) : u'\uFFFD';
  }
  return wide;
}

}  // namespace quorvane::checker
