#include "hosts/keyboard/Translate.h"

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

#include "hosts/keyboard/LayoutWriter.h"
#include "hosts/keyboard/StandardLayouts.h"

namespace quorvane::keyboard {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr OSStatus kParamErr = -50;
constexpr std::uint32_t kShiftState = 2;
constexpr std::uint32_t kOptionState = 8;

struct Stroke {
  std::uint16_t key = 0;
  std::uint32_t modifiers = 0;
  std::uint32_t options = 0;
  std::uint16_t action = kUCKeyActionDown;
  std::size_t room = 32;
};

struct Typing {
  std::u16string press(const Bytes& bytes, const Stroke& stroke) {
    const Bytes exact(bytes.begin(), bytes.end());  // one byte too far is seen
    std::u16string units(stroke.room, u'?');
    std::size_t length = 99;
    status = Translator().UCKeyTranslate(exact, stroke.key, stroke.action, stroke.modifiers, type,
                                         stroke.options, state, units, length);
    return units.substr(0, length);
  }
  std::uint32_t type = kKeyboardType;
  std::uint32_t state = 0;
  OSStatus status = noErr;
};

/// What the format has a way of its own for: each kind of unit, pairs, texts, dead keys.
LayoutTables oddTables() {
  LayoutTables made;
  made.tables.resize(3);
  const char16_t* const texts[] = {u"a",      u"\u3FFF", u"\u4000", u"\u7FFF", u"\u8000",
                                   u"\uBFFF", u"\uC000", u"\uFFFD", u"\uFFFE", u"\U0001F600",
                                   u"abcdef", u"e",      u"",       u"\u8001", u"\r"};
  for (std::uint16_t key = 0; const char16_t* text : texts) made.tables[0][key++].text = text;
  for (std::uint16_t key = 0; key < kKeyCount; ++key) {
    made.tables[1][key].text.assign(1U + key % 3U, static_cast<char16_t>(0x3FC0 + key));
    made.tables[2][key].deadKey = key % 4;
  }
  made.tableOf[1] = made.tableOf[0xFF] = 1;
  made.tableOf[2] = 2;
  made.deadKeys = {{u"'", {{u"a", u"\u4E00"}, {u"e", u"\u00E9"}, {u"abcdef", u"x"}}},
                   {u"", {{u"a", u"aa"}}},
                   {u"\u9000", {{u"\u7FFF", u"\uFFFE"}, {u"a", u"b"}}}};
  return made;
}

std::u16string expected(const LayoutTables& tables, std::uint32_t state, const KeyOutput& key) {
  if (key.text.empty() && key.deadKey == 0) return {};
  if (state == 0) return key.text;
  const DeadKey& dead = tables.deadKeys[state - 1];
  const auto found = dead.composed.find(key.text);
  return found == dead.composed.end() ? dead.terminator + key.text : found->second;
}

TEST(LayoutWriter, WhatIsWrittenIsWhatTheKeysType) {
  const LayoutTables tables = oddTables();
  const LayoutData data = writeLayout(tables);
  for (std::uint32_t before = 0; before <= tables.deadKeys.size(); ++before) {
    for (const std::uint32_t modifiers : {0U, 1U, 2U, 0xFFU, 0x100U}) {
      for (std::uint16_t code = 0; code < kKeyCount; ++code) {
        const KeyOutput& key = tables.tables[tables.tableOf[modifiers & 0xFF]][code];
        const bool nothing = key.text.empty() && key.deadKey == 0;
        Typing typing{.state = before};
        ASSERT_EQ(typing.press(*data, {code, modifiers}), expected(tables, before, key))
            << before << " " << modifiers << " " << code;
        ASSERT_EQ(typing.state, nothing ? before : key.deadKey);
      }
    }
  }
}

TEST(LayoutWriter, RefusesWhatHasNoRoom) {
  LayoutTables tooLong;
  tooLong.tables.resize(1);
  tooLong.tables[0][0].text.assign(40'000, u'x');
  EXPECT_THROW(writeLayout(tooLong), std::length_error);
  LayoutTables tooMany;
  tooMany.tables.resize(257);
  EXPECT_THROW(writeLayout(tooMany), std::length_error);
}

// E, U and the letters behind them on the layout with dead keys.
TEST(Translator, ADeadKeyWaitsForTheNextCharacter) {
  constexpr std::uint32_t kNoDeadKeys = kUCKeyTranslateNoDeadKeysMask;
  constexpr Stroke kAcute{14, kOptionState};
  struct Step {
    Stroke stroke;
    std::u16string text;
    OSStatus status = noErr;
  };
  const std::vector<Step> cases[] = {
      {{kAcute, u""}, {{0}, u"á"}, {{0}, u"a"}},
      {{kAcute, u""}, {{17}, u"´t"}, {{0}, u"a"}},
      {{kAcute, u""}, {{36}, u"´\r"}},
      {{kAcute, u""}, {{32, kOptionState}, u"´"}, {{0}, u"ä"}},
      {{kAcute, u""}, {{56, kShiftState}, u""}, {{0, kShiftState}, u"Á"}},
      {{kAcute, u""}, {{0, 0, 0, kUCKeyActionUp}, u""}, {{0, 0, 0, kUCKeyActionAutoKey}, u"á"}},
      {{kAcute, u""}, {{0, 0, kNoDeadKeys}, u"á"}},
      {{kAcute, u""}, {{17, 0, 0, 0, 1}, u"", kUCOutputBufferTooSmall}, {{0}, u"á"}},
      {{{14, kOptionState, kNoDeadKeys}, u"´"}, {{0}, u"a"}},
      {{{14, kOptionState, 0, kUCKeyActionDisplay}, u"´"}, {{0}, u"a"}},
      {{{300}, u""}, {{0, 0xFFFFFFFF}, u"a"}},
  };
  const LayoutData data = usLayoutWithDeadKeys();
  for (const auto& steps : cases) {
    Typing typing;
    for (const Step& step : steps) {
      EXPECT_EQ(typing.press(*data, step.stroke), step.text) << &step - steps.data();
      EXPECT_EQ(typing.status, step.status);
    }
  }
}

struct Patch {
  std::size_t offset;
  std::uint32_t value;
  std::size_t size = 2;
};

constexpr std::size_t kSecond = 40, kModifiers = 68, kTables = 80, kRecords = 112, kSequences = 144;

// Types 10 to 20 have tables alone; type 40 has a record, a terminator and a sequence too.
// clang-format off
constexpr std::uint16_t kWords[] = {
    0x1002, 0, 0, 0, 2, 0,                               // head
    10, 0, 20, 0, kModifiers, 0, kTables, 0, 0, 0, 0, 0, 0, 0,
    40, 0, 40, 0, kModifiers, 0, kTables, 0, kRecords, 0, 136, 0, kSequences, 0,
    0x3001, 0, 3, 0, 0x0100, 0x0007,                     // modifiers: tables 0, 1, 7
    0x4001, 4, 2, 0, 96, 0, 104, 0,                      // two tables of four keys
    'a', 0x4000, 0x8000, 0xFFFF, 'A', 0x4001, 0x8001, 0,
    0x5001, 1, 120, 0, 'r', 1, 1, 2, 2, 0x0301, 'x', 9,  // a range: states 2 and 3
    0x6001, 1, '^', 0,
    0x7001, 1, 8, 12, 'p', 'q'};
// clang-format on

Bytes patched(const std::vector<Patch>& patches) {
  Bytes bytes(sizeof kWords);
  std::memcpy(bytes.data(), kWords, sizeof kWords);
  for (const Patch& patch : patches) {
    std::memcpy(bytes.data() + patch.offset, &patch.value, patch.size);
  }
  return bytes;
}

TEST(Translator, ReadsWhatIsThereAndNothingElse) {
  struct Case {
    const char* what;
    std::vector<Patch> patches;
    Typing typing;
    Stroke stroke;
    std::u16string text;
    std::uint32_t stateBehind = 0;
    OSStatus status = noErr;
  };
  const Typing none;
  const Case cases[] = {
      {"a unit", {}, none, {0}, u"a"},
      {"a table that isn't there", {}, none, {0, 2}, u""},
      {"the default table", {{kModifiers + 2, 1}}, none, {0, 3}, u"A"},
      {"a dead key has a terminator", {}, {.state = 1}, {0}, u"^a"},
      {"or none", {}, {.state = 70'000}, {0}, u"a"},
      {"below the range", {}, {.state = 1}, {1}, u"^r", 1},
      {"its first state", {}, {.state = 2}, {1}, u"x", 9},
      {"its last", {}, {.state = 3}, {1}, u"{", 9},
      {"no character in it", {{132, 0xFFFF}}, {.state = 3}, {1}, u""},
      {"above it", {}, {.state = 4}, {1}, u"r", 1},
      {"entries of no format", {{126, 3}}, {.state = 2}, {1}, u"r", 1},
      {"more entries than bytes", {{124, 0xFFFF}}, {.state = 5}, {1}, u"r", 1},
      {"the number of no record is a unit", {}, none, {1, 1}, u"\u4001"},
      {"a sequence", {}, none, {2}, u"pq"},
      {"the number of none is a unit", {}, none, {2, 1}, u"\u8001"},
      {"a sequence that goes backwards", {{kSequences + 6, 2}}, none, {2}, u""},
      {"that ends outside", {{kSequences + 6, 0xFFFF}}, none, {2}, u"pq"},
      {"a type of the first entry", {}, {.type = 15}, {1}, u"\u4000"},
      {"of none: the first", {}, {.type = 99}, {1}, u"\u4000"},
      {"only its low 8 bits", {}, {.type = 0x1028}, {1}, u"r", 1},
      {"a table outside", {{kTables + 8, 0xFFFFFFFF, 4}}, none, {0}, u""},
      {"a record outside", {{kRecords + 4, 155, 4}}, none, {1}, u""},
      {"records of another format", {{kRecords, 1}}, none, {1}, u"\u4000"},
      {"no head", {{0, 1}}, none, {0}, u"", 0, kParamErr},
      {"no entries", {{8, 0, 4}}, none, {0}, u"", 0, kParamErr},
      {"more entries than bytes", {{8, 0xFFFFFFFF, 4}}, none, {0}, u"a"},
      {"no modifiers", {{kSecond + 8, 0, 4}}, none, {0}, u"", 0, kParamErr},
      {"no tables", {{kSecond + 12, 999, 4}}, none, {0}, u"", 0, kParamErr},
  };
  for (Case one : cases) {
    EXPECT_EQ(one.typing.press(patched(one.patches), one.stroke), one.text) << one.what;
    EXPECT_TRUE(one.text.empty() || one.typing.state == one.stateBehind) << one.what;
    EXPECT_EQ(one.typing.status, one.status) << one.what;
  }
}

TEST(Translator, ALayoutMayEndAnywhere) {
  for (std::size_t length = 0; length < sizeof kWords; ++length) {
    Bytes cut = patched({});
    cut.resize(length);
    EXPECT_EQ(Typing().press(cut, {0}), length < 98 ? u"" : u"a") << length;
    for (const std::uint32_t state : {0U, 1U, 3U}) {
      Typing{.state = state}.press(cut, {1});
      Typing{.state = state}.press(cut, {2});
    }
  }
}

}  // namespace
}  // namespace quorvane::keyboard
