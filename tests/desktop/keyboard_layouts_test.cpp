// Keymaps of the system: from the session's settings to the key that types a character.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <set>

#include "hosts/keyboard/Keyboard.h"
#include "platform/AppKitEvents.h"
#include "src/base/Instance.h"
#include "src/keys/AsciiToKeyCode.h"
#include "tests/support/DesktopStage.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kShift = NSEventModifierFlagShift;
constexpr std::uint32_t kOption = NSEventModifierFlagOption;
constexpr std::uint32_t kCapsLock = NSEventModifierFlagCapsLock;

struct KeyboardLayouts : testing::Test {
  KeyboardLayouts() { forgetSession(); }
  ~KeyboardLayouts() override { forgetSession(); }
  static void forgetSession() {
    for (const char* name :
         {"QUORVANE_LAYOUT", "XKB_DEFAULT_RULES", "XKB_DEFAULT_MODEL", "XKB_DEFAULT_LAYOUT",
          "XKB_DEFAULT_VARIANT", "XKB_DEFAULT_OPTIONS", "XCOMPOSEFILE", "XLOCALEDIR"}) {
      unsetenv(name);
    }
  }
  static void use(const std::string& layout) { setenv("QUORVANE_LAYOUT", layout.c_str(), 1); }
  std::u16string press(std::uint16_t key, std::uint32_t word, std::uint32_t& state) {
    std::array<char16_t, 8> units{};
    std::size_t length = 0;
    platform.unicodeUtilities.UCKeyTranslate(*stage.host().keyboardLayout(), key, 0, word >> 8, 40,
                                             0, state, units, length);
    return {units.data(), length};
  }
  /// What the key types under a classic modifier word; empty for a dead key.
  std::u16string translated(std::uint16_t key, std::uint32_t word) {
    std::uint32_t state = 0;
    return press(key, word, state);
  }
  std::set<char16_t> charactersOnKeys() {
    std::set<char16_t> found;
    for (const std::uint32_t word : {0U, shiftKey, optionKey}) {
      for (std::uint16_t key = 0; key < 128; ++key) {
        const std::u16string text = translated(key, word);
        if (text.size() == 1 && text[0] >= u' ') found.insert(text[0]);
      }
    }
    return found;
  }

  tests::DesktopStage stage;
  Platform platform = stage.platform();
  Instance instance{platform};
  keyboard::Keyboard keyboard{[this] { return stage.host().keyboardLayout(); }};
};

// What is missing lies under shift on a key where option begins a dead key: option is tried first,
// and its dead key then waits through the trial of shift. Beyond 7 bits nothing is found.
TEST_F(KeyboardLayouts, EachCharacterHasAKeyThatTypesIt) {
  const std::map<std::string, std::string> lostToADeadKey{
      {"us", ""}, {"us(dvorak)", "\"(:^`}~"}, {"de", "J"}, {"fr", "%?J"}};
  for (const auto& [layout, expected] : lostToADeadKey) {
    use(layout);
    std::string lost;
    for (const char16_t character : charactersOnKeys()) {
      std::uint16_t word = 0;
      const std::uint16_t key = Get_keyCodeForChar(instance, character, &word);
      if (character > 0x7F) {
        EXPECT_TRUE(character > 0xFF || key == kNoKeyCode) << layout << " " << key;
      } else if (translated(key, word) != std::u16string(1, character)) {
        lost.push_back(static_cast<char>(character));
        EXPECT_TRUE(translated(key, optionKey).empty()) << layout << " " << lost;
      }
    }
    EXPECT_EQ(lost, expected) << layout;
  }
}

TEST_F(KeyboardLayouts, KeysHaveThePlatformsCodesAndXkbsModifiers) {
  struct Case {
    const char* layout;
    std::uint16_t key;
    std::uint32_t flags;
    std::u16string text;
  };
  const Case cases[] = {
      {"us", 50, kShift, u"~"},           {"us", 49, kOption, u" "},
      {"us", 36, kShift, u"\r"},          {"de", 10, kShift, u">"},
      {"de", 41, kCapsLock, u"Ö"},        {"de", 41, kCapsLock | kShift, u"Ö"},
      {"de", 18, kCapsLock, u"1"},        {"de", 12, kOption, u"@"},
      {"de", 12, kOption | kShift, u"Ω"}, {"de", 50, 0, u"^"},
      {"de", 87, kShift, u"5"},           {"de", 65, 0, u","},
      {"fr", 18, kShift, u"1"},           {"ru", 0, 0, u"ф"},
      {"de,nonsense", 16, 0, u"z"},
  };
  for (const Case& one : cases) {
    use(one.layout);
    EXPECT_EQ(keyboard.charactersForKey(one.key, one.flags), one.text)
        << one.layout << " " << one.key;
  }
}

TEST_F(KeyboardLayouts, DeadKeysComposeByTheTableAndEndInTheirCharacterWithoutOne) {
  use("de");
  const auto composed = [this](const std::vector<std::uint16_t>& keys) {
    std::u16string text;
    std::uint32_t state = 0;
    for (const std::uint16_t key : keys) text += press(key, 0, state);
    return text;
  };
  EXPECT_EQ(composed({50, 0, 50, 49, 50, 3, 24, 14}), u"â^^fé");
  setenv("XLOCALEDIR", stage.runtimeFile("none").c_str(), 1);
  use("de(basic)");
  EXPECT_EQ(composed({50, 0, 24, 14}), u"^a´e");
}

TEST_F(KeyboardLayouts, ASwitchTakesEffectAtTheNextLookUp) {
  use("us");
  EXPECT_EQ(AsciiToKeyCode(instance, 'v'), 9);
  use("us(dvorak)");
  EXPECT_EQ(AsciiToKeyCode(instance, 'v'), 47);
  EXPECT_EQ(keyboard.keyForCharacter(U'v')->keyCode, 47);
  use("ru");
  EXPECT_EQ(AsciiToKeyCode(instance, 'v'), 9) << "us, since nobody types ASCII on this one";
  const auto source = platform.textInputSources.TISCopyCurrentKeyboardInputSource();
  EXPECT_EQ(source->kTISPropertyLocalizedName, "ru");
  EXPECT_EQ(Get_KeyBoardLayout_Ptr(instance), stage.host().keyboardLayout());
}

TEST_F(KeyboardLayouts, WhatIsNoLayoutIsToldOnceAndUsIsTaken) {
  struct Lines final : LogSink {
    void writeLine(std::string_view line) override { text.emplace_back(line); }
    std::vector<std::string> text;
  } lines;
  desktop::KeyboardLayouts layouts(lines);
  std::size_t told = 0;
  for (const char* name : {"nonsense", "us(nonsense", "../../../etc/passwd", "%f%a\n"}) {
    use(name);
    EXPECT_EQ(layouts.current(), layouts.asciiCapable());
    EXPECT_EQ(layouts.current()->kTISPropertyLocalizedName, "us");
    EXPECT_EQ(lines.text.size(), ++told) << name;
  }
}

TEST_F(KeyboardLayouts, OwnVariableThenXkbsThenTheFileChoose) {
  const tests::OwnFolder folder;
  const std::string file = folder.path() / "keyboard";
  EXPECT_EQ(xkb::chosenLayout(file), xkb::RuleNames{});
  std::ofstream(file) << "# a comment\nXKBLAYOUT=\"de,us\" \nXKBVARIANT='nodeadkeys,'\nXKBMODEL=\n";
  EXPECT_EQ(xkb::chosenLayout(file), (xkb::RuleNames{"", "", "de", "nodeadkeys", ""}));
  std::ofstream(file, std::ios::app) << std::string(70'000, 'x') << "\nXKBLAYOUT=fr\n";
  EXPECT_EQ(xkb::chosenLayout(file), xkb::RuleNames{});
  setenv("XKB_DEFAULT_LAYOUT", "fr,de", 1);
  setenv("XKB_DEFAULT_OPTIONS", "caps:none", 1);
  EXPECT_EQ(xkb::chosenLayout(file), (xkb::RuleNames{"", "", "fr", "", "caps:none"}));
  use("us(dvorak)");
  EXPECT_EQ(xkb::chosenLayout(file), (xkb::RuleNames{"", "", "us", "dvorak", ""}));
  setenv("XKB_DEFAULT_RULES", "nonsense", 1);
  EXPECT_NE(xkb::layoutOf(xkb::chosenLayout(file)), nullptr) << "no mixture";
}

}  // namespace
}  // namespace quorvane
