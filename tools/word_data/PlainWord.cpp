#include "tools/word_data/PlainWord.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <stdexcept>

namespace quorvane::word_data {
namespace {

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string asciiLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

icu::UnicodeString decomposed(std::string_view utf8) {
  UErrorCode error = U_ZERO_ERROR;
  const icu::Normalizer2* form = icu::Normalizer2::getNFDInstance(error);
  const auto text = icu::UnicodeString::fromUTF8(
      icu::StringPiece(utf8.data(), static_cast<std::int32_t>(utf8.size())));
  icu::UnicodeString result = form->normalize(text, error);
  if (U_FAILURE(error)) throw std::runtime_error("ICU can't decompose text");
  return result;
}

// Letters that stand for two, which no decomposition takes apart.
void appendLetters(icu::UnicodeString& out, UChar32 c) {
  switch (c) {
    case 0xe6:
      out.append(u"ae", 2);
      break;
    case 0x153:
      out.append(u"oe", 2);
      break;
    case 0xf8:
      out.append(u'o');
      break;
    default:
      out.append(c);
  }
}

}  // namespace

bool isPlain(std::string_view word) {
  return !word.empty() && std::ranges::all_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
}

bool hasVowel(std::string_view word) {
  return word.find_first_of("aeiouy") != std::string_view::npos;
}

std::string folded(std::string_view utf8) {
  if (isAscii(utf8)) return asciiLower(utf8);
  const icu::UnicodeString text = decomposed(utf8).foldCase();
  icu::UnicodeString letters;
  for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1))
    if (u_charType(text.char32At(i)) != U_NON_SPACING_MARK)
      appendLetters(letters, text.char32At(i));
  std::string result;
  return letters.toUTF8String(result);
}

}  // namespace quorvane::word_data
