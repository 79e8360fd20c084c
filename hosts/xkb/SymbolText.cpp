#include "hosts/xkb/SymbolText.h"

#include <unicode/unistr.h>

namespace quorvane::xkb {

std::u16string fromUtf8(std::string_view utf8) {
  const icu::UnicodeString text = icu::UnicodeString::fromUTF8(
      icu::StringPiece(utf8.data(), static_cast<std::int32_t>(utf8.size())));
  return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

std::u16string textOf(xkb_keysym_t symbol) {
  const std::uint32_t character = xkb_keysym_to_utf32(symbol);
  if (character < 0x20 || character == 0x7F) return {};
  const icu::UnicodeString text(static_cast<UChar32>(character));
  return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

}  // namespace quorvane::xkb
