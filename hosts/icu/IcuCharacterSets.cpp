#include "hosts/icu/IcuCharacterSets.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <limits>

namespace quorvane {
namespace {

bool isOneOf(char16_t character, std::uint32_t categories) {
  return (U_GET_GC_MASK(character) & categories) != 0;
}

char16_t lowerAscii(char16_t character) {
  return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character + 0x20)
                                                : character;
}

/// Writes as much as fits; returns how long the whole is.
std::int32_t lowerInto(std::u16string& out, std::u16string_view text, UErrorCode& error) {
  return u_strToLower(out.data(), static_cast<std::int32_t>(out.size()), text.data(),
                      static_cast<std::int32_t>(text.size()), "", &error);
}

std::u16string lowerByIcu(std::u16string_view text) {
  if (text.size() > std::numeric_limits<std::int32_t>::max() / 4) return std::u16string(text);
  std::u16string lowered(text.size(), u'\0');
  UErrorCode error = U_ZERO_ERROR;
  std::int32_t length = lowerInto(lowered, text, error);
  lowered.resize(static_cast<std::size_t>(length));
  if (error == U_BUFFER_OVERFLOW_ERROR) {
    error = U_ZERO_ERROR;
    lowerInto(lowered, text, error);
  }
  return U_SUCCESS(error) ? lowered : std::u16string(text);
}

}  // namespace

bool IcuCharacterSets::decimalDigitCharacterSet(char16_t character) {
  return isOneOf(character, U_GC_ND_MASK);
}

bool IcuCharacterSets::punctuationCharacterSet(char16_t character) {
  return isOneOf(character, U_GC_P_MASK);
}

bool IcuCharacterSets::symbolCharacterSet(char16_t character) {
  return isOneOf(character, U_GC_S_MASK);
}

std::u16string IcuCharacterSets::lowercaseString(std::u16string_view text) {
  if (std::ranges::any_of(text, [](char16_t character) { return character >= 128; })) {
    return lowerByIcu(text);
  }
  std::u16string lowered(text);
  std::ranges::transform(lowered, lowered.begin(), lowerAscii);
  return lowered;
}

}  // namespace quorvane
