// The user's files of words and abbreviations, what is written out of them into a text, and the
// tools on a text.

#include <algorithm>

#include "fuzz/Target.h"
#include "hosts/icu/IcuTextEncoding.h"
#include "tools/checker/AutoType.h"
#include "tools/checker/TextTools.h"
#include "tools/checker/UserWords.h"

namespace quorvane::fuzz {
namespace {

using namespace checker;

void checkWords(std::string_view file) {
  WordSet words;
  readWords(file, words);
  for (const std::string& word : words) require(word.size() <= 63, "a word is bounded");
}

void checkExpansion(const Abbreviations& abbreviations, Bytes typed) {
  TextRecord record{{typed.begin(), typed.end()}, typed.size(), 0, true};
  if (!typed.empty()) record.key = typed.back();
  const auto fix = findExpansion({record}, abbreviations);
  if (!fix) return;
  require(fix->corrected.text.size() <= kTextCapacity, "the session has room for it");
  require(fix->corrected.text.back() == record.text.back(), "the key stays behind it");
  require(fix->count > 1 && fix->count <= record.text.size(), "what it replaces stands there");
}

void checkTools(std::u16string_view text) {
  for (const std::uint32_t once : {17100U, 17101U}) {
    const auto after = afterTextTool(once, text);
    // A return and a line feed that come to stand together are one end of a line.
    const bool same = text.find(u'\r') != text.npos || afterTextTool(once, *after) == *after;
    require(same, "nothing is left for a second time");
  }
  for (const std::uint32_t command : {17102U, 17110U, 17111U}) afterTextTool(command, text);
}

}  // namespace

void run(Bytes bytes) {
  static IcuTextEncoding encoding;
  Input input(bytes);
  const Bytes typed = input.counted();
  const Bytes file = input.take(SIZE_MAX);
  Abbreviations abbreviations;
  readAbbreviations(textOf(file), encoding, abbreviations);
  checkExpansion(abbreviations, typed.first(std::min(typed.size(), kTextCapacity)));
  checkWords(textOf(file));
  const auto text = encoding.initWithData(file, NSStringEncoding::UTF8);
  if (text) checkTools(*text);
}

}  // namespace quorvane::fuzz
