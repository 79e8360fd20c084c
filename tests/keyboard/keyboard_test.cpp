#include "hosts/keyboard/Keyboard.h"

#include <gtest/gtest.h>

#include "hosts/keyboard/StandardLayouts.h"
#include "platform/AppKitEvents.h"

namespace quorvane::keyboard {
namespace {

constexpr std::uint32_t kShift = NSEventModifierFlagShift;
constexpr std::uint32_t kOption = NSEventModifierFlagOption;
constexpr std::uint32_t kCapsLock = NSEventModifierFlagCapsLock;
constexpr std::uint32_t kCommand = NSEventModifierFlagCommand;

std::uint32_t flagsOf(const Key& key) {
  return (key.shift ? kShift : 0) | (key.option ? kOption : 0);
}

TEST(Keyboard, EveryCharacterOfALayoutComesBackFromItsKey) {
  for (const LayoutData& layout : {usLayout(), usLayoutWithDeadKeys(), dvorakLayout()}) {
    Keyboard keyboard([&] { return layout; });
    for (char32_t character = 0x20; character < 0x7F; ++character) {
      const auto found = keyboard.keyForCharacter(character);
      ASSERT_TRUE(found) << static_cast<char>(character);
      EXPECT_FALSE(found->option);
      EXPECT_EQ(keyboard.charactersForKey(found->keyCode, flagsOf(*found)),
                std::u16string(1, static_cast<char16_t>(character)));
    }
  }
}

TEST(Keyboard, SpecialKeysAreThereWithoutALayoutToo) {
  for (const LayoutData& layout : {usLayout(), LayoutData()}) {
    Keyboard keyboard([&] { return layout; });
    EXPECT_EQ(keyboard.keyForCharacter(28)->keyCode, 123);
    EXPECT_FALSE(keyboard.keyForCharacter(28)->function);
    EXPECT_EQ(keyboard.keyForCharacter(127)->keyCode, 117);
    EXPECT_TRUE(keyboard.keyForCharacter(127)->function);
    EXPECT_EQ(keyboard.charactersForKey(36, kShift), u"\r");
    EXPECT_EQ(keyboard.charactersForKey(56, kShift), u"");
    EXPECT_EQ(keyboard.keyForCharacter(U'a').has_value(), layout != nullptr);
  }
}

TEST(Keyboard, OptionTypesCharactersOrBeginsDeadKeys) {
  const LayoutData withDeadKeys = usLayoutWithDeadKeys();
  Keyboard plain(usLayout);
  Keyboard dead([&] { return withDeadKeys; });
  EXPECT_EQ(plain.keyForCharacter(U'√')->keyCode, 9);
  EXPECT_TRUE(plain.keyForCharacter(U'√')->option);
  EXPECT_EQ(plain.keyForCharacter(U'´')->keyCode, 14);
  EXPECT_EQ(dead.charactersForKey(14, kOption), u"´") << "what it leaves behind";
  EXPECT_TRUE(dead.keyForCharacter(U'´')->shift) << "a dead key is no key for it";
  EXPECT_EQ(plain.charactersForKey(18, kOption), u"1") << "letters only";
  EXPECT_EQ(plain.charactersForKey(9, kOption | kCommand), u"v") << "a shortcut";
  EXPECT_EQ(plain.charactersForKey(9, kShift | kCommand), u"V");
  EXPECT_EQ(plain.charactersForKey(0, kCapsLock), u"A");
  EXPECT_EQ(plain.charactersForKey(18, kCapsLock | kShift), u"!");
  EXPECT_EQ(plain.charactersForKey(18, kCapsLock), u"1");
  EXPECT_FALSE(dead.keyForCharacter(U'é'));
}

TEST(Keyboard, ALayoutSwitchedCountsAtOnceAndSimplerKeysGoFirst) {
  LayoutTables tables;
  tables.tables.resize(2);
  tables.tableOf[2] = 1;
  tables.tables[0][90].text = u"x";
  tables.tables[0][80].text = u"\U0001F600";
  tables.tables[0][100].text = u"x";
  tables.tables[1][3].text = u"x";
  LayoutData layout = usLayout();
  Keyboard keyboard([&] { return layout; });
  EXPECT_EQ(keyboard.keyForCharacter(U'x')->keyCode, 7);
  layout = writeLayout(tables);
  EXPECT_EQ(keyboard.keyForCharacter(U'x')->keyCode, 90);
  EXPECT_EQ(keyboard.keyForCharacter(U'\U0001F600')->keyCode, 80);
  EXPECT_EQ(keyboard.charactersForKey(0, 0), u"");
}

}  // namespace
}  // namespace quorvane::keyboard
