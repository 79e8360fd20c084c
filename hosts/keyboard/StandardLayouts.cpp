#include "hosts/keyboard/StandardLayouts.h"

#include <string_view>

#include "hosts/keyboard/PrintedKeys.h"
#include "hosts/keyboard/StandardTables.h"

namespace quorvane::keyboard {
namespace {

constexpr Print kDvorak{"`1234567890[]',.pyfgcrl/=\\aoeuidhtns-;qjkxbmwvz ",
                        "~!@#$%^&*(){}\"<>PYFGCRL?+|AOEUIDHTNS_:QJKXBMWVZ "};
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
  static const LayoutData layout = writeLayout(tablesOf(kUSPrint));
  return layout;
}

LayoutData usLayoutWithDeadKeys() {
  LayoutTables tables = tablesOf(kUSPrint);
  addDeadKeys(tables);
  return writeLayout(tables);
}

LayoutData dvorakLayout() { return writeLayout(tablesOf(kDvorak)); }

}  // namespace quorvane::keyboard
