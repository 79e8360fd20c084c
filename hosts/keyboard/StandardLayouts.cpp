#include "hosts/keyboard/StandardLayouts.h"

#include <string_view>

#include "hosts/keyboard/StandardTables.h"

namespace quorvane::keyboard {
namespace {

/// The keys that type something, row by row from the top left.
constexpr std::array<std::uint8_t, 48> kPrintedKeys{
    50, 18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27, 24,  // digits
    12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30, 42,  //
    0,  1,  2,  3,  5,  4,  38, 40, 37, 41, 39,          //
    6,  7,  8,  9,  11, 45, 46, 43, 47, 44, 49};

using Print = std::array<std::string_view, 2>;  ///< plain and shifted, in the order of the keys

constexpr Print kUS{"`1234567890-=qwertyuiop[]\\asdfghjkl;'zxcvbnm,./ ",
                    "~!@#$%^&*()_+QWERTYUIOP{}|ASDFGHJKL:\"ZXCVBNM<>? "};
constexpr Print kDvorak{"`1234567890[]',.pyfgcrl/=\\aoeuidhtns-;qjkxbmwvz ",
                        "~!@#$%^&*(){}\"<>PYFGCRL?+|AOEUIDHTNS_:QJKXBMWVZ "};
static_assert(kUS[0].size() == kPrintedKeys.size() && kUS[1].size() == kPrintedKeys.size());
static_assert(kDvorak[0].size() == kPrintedKeys.size() && kDvorak[1].size() == kPrintedKeys.size());

// By letter, from a to z.
constexpr std::u16string_view kOptionLetters = u"å∫ç∂´ƒ©˙ˆ∆˚¬µ˜øπœ®ß†¨√∑≈¥Ω";
constexpr std::u16string_view kOptionShiftLetters = u"ÅıÇÎ´Ï˝ÓˆÔ˚ÒÂ˜Ø∏Œ‰Íˇ¨◊„˛Á¸";
static_assert(kOptionLetters.size() == 26 && kOptionShiftLetters.size() == 26);

bool isLetter(char character) { return character >= 'a' && character <= 'z'; }

KeyOutput printed(char character) { return {{static_cast<char16_t>(character)}}; }

LayoutTables tablesOf(const Print& print) {
  LayoutTables made = standardTables();
  for (std::size_t i = 0; i < kPrintedKeys.size(); ++i) {
    const std::size_t key = kPrintedKeys[i];
    const KeyOutput plain = printed(print[0][i]);
    const KeyOutput shifted = printed(print[1][i]);
    const bool letter = isLetter(print[0][i]);
    const auto place = static_cast<std::size_t>(print[0][i] - 'a');
    made.tables[kPlain][key] = plain;
    made.tables[kShift][key] = shifted;
    made.tables[kCaps][key] = letter ? shifted : plain;
    made.tables[kOption][key] = letter ? KeyOutput{{kOptionLetters[place]}} : plain;
    made.tables[kOptionShift][key] = letter ? KeyOutput{{kOptionShiftLetters[place]}} : shifted;
    made.tables[kCapsOption][key] = made.tables[kOption][key];
  }
  return made;
}

struct PlatformDeadKey {
  std::uint16_t keyCode;
  char16_t terminator;
  std::u16string_view bases;
  std::u16string_view composed;
};

constexpr std::array<PlatformDeadKey, 5> kDeadKeys{{
    {14, u'´', u" aeiouAEIOU", u"´áéíóúÁÉÍÓÚ"},
    {32, u'¨', u" aeiouyAEIOUY", u"¨äëïöüÿÄËÏÖÜŸ"},
    {34, u'ˆ', u" aeiouAEIOU", u"ˆâêîôûÂÊÎÔÛ"},
    {45, u'˜', u" anoANO", u"˜ãñõÃÑÕ"},
    {50, u'`', u" aeiouAEIOU", u"`àèìòùÀÈÌÒÙ"},
}};

DeadKey composing(const PlatformDeadKey& key) {
  DeadKey made{std::u16string(1, key.terminator), {}};
  for (std::size_t i = 0; i < key.bases.size(); ++i) {
    made.composed[std::u16string(1, key.bases[i])] = key.composed[i];
  }
  return made;
}

void addDeadKeys(LayoutTables& tables) {
  for (const PlatformDeadKey& key : kDeadKeys) {
    tables.deadKeys.push_back(composing(key));
    const auto number = static_cast<std::uint16_t>(tables.deadKeys.size());
    for (const StandardTable table : {kOption, kCapsOption}) {
      tables.tables[table][key.keyCode] = {{}, number};
    }
  }
}

}  // namespace

LayoutData usLayout() {
  static const LayoutData layout = writeLayout(tablesOf(kUS));
  return layout;
}

LayoutData usLayoutWithDeadKeys() {
  LayoutTables tables = tablesOf(kUS);
  addDeadKeys(tables);
  return writeLayout(tables);
}

LayoutData dvorakLayout() { return writeLayout(tablesOf(kDvorak)); }

}  // namespace quorvane::keyboard
