#include <gtest/gtest.h>

#include "hosts/keyboard/StandardLayouts.h"
#include "hosts/memory/MemoryHost.h"
#include "src/keys/AsciiToKeyCode.h"
#include "src/keys/QBIM_IMK_EventPosting.h"

namespace quorvane {
namespace {

struct KeyCodes : testing::Test {
  struct Found {
    std::uint16_t key;
    std::uint16_t word;
    bool operator==(const Found&) const = default;
  };
  Found find(int character) {
    std::uint16_t word = 0;
    const std::uint16_t key =
        ComposeEventMessage(process, static_cast<std::uint32_t>(character), &word);
    return {key, word};
  }

  memory::MemoryHost host;
  Process process{host.platform()};
};

// Option is tried before shift, and the bare key never.
TEST_F(KeyCodes, ACharacterHasItsKeyAndTheFirstModifiersThatYieldIt) {
  EXPECT_EQ(find('A'), (Found{0, 0x0280}));
  EXPECT_EQ(find('a'), (Found{0, 0x0080}));
  EXPECT_EQ(find('!'), (Found{18, 0x0280}));
  EXPECT_EQ(find('1'), (Found{18, 0x0880})) << "option leaves it as it is";
  EXPECT_EQ(find(' '), (Found{49, 0x0880}));
  EXPECT_EQ(find(0x10041), (Found{0, 0x0280})) << "cut to 16 bits";
  EXPECT_EQ(find(0xE5), (Found{kNoKeyCode, 0x0080})) << "not even a character that is there";
  EXPECT_EQ(Get_keyCodeForChar(process, 'B', nullptr), 11);
  EXPECT_EQ(AsciiToKeyCode(process, 0x0141), 0) << "the low byte";
}

TEST_F(KeyCodes, ADeadKeyUnderOptionSpoilsTheTrialsBehindIt) {
  host.useLayout(keyboard::usLayoutWithDeadKeys());
  for (const char letter : {'E', 'U', 'I', 'N'}) EXPECT_EQ(find(letter).word, 0x0080) << letter;
  EXPECT_EQ(find('A'), (Found{0, 0x0280}));
  EXPECT_EQ(find('`').word, 0x0080);
}

TEST_F(KeyCodes, CurlyQuotesHaveAWordAndNoKeyOnAnyLayout) {
  for (const auto& layout : {keyboard::usLayout(), keyboard::LayoutData{}}) {
    host.useLayout(layout);
    EXPECT_EQ(find(210), (Found{kNoKeyCode, 0x0880}));
    EXPECT_EQ(find(211), (Found{kNoKeyCode, 0x0A80}));
    EXPECT_EQ(find(212), (Found{kNoKeyCode, 0x0880}));
    EXPECT_EQ(find(213), (Found{kNoKeyCode, 0x0A80}));
    EXPECT_EQ(find(0x1D2), (Found{kNoKeyCode, 0x0080})) << "a whole character, not its low byte";
  }
}

TEST_F(KeyCodes, TheNextLookUpAnswersForTheNextLayout) {
  EXPECT_EQ(find('v').key, 9);
  EXPECT_EQ(createStringForKey(process, 9), u"v");
  host.useLayout(keyboard::dvorakLayout());
  EXPECT_EQ(find('v').key, 47);
  EXPECT_EQ(createStringForKey(process, 9), u"k");
  EXPECT_EQ(createStringForKey(process, 500), std::u16string(1, u'\0')) << "always one unit";
  host.textInputSources.layout = std::make_shared<TISInputSource>();
  EXPECT_EQ(find('v').key, kNoKeyCode);
  EXPECT_EQ(createStringForKey(process, 9), std::nullopt);
  host.textInputSources.layout = nullptr;
  EXPECT_EQ(find('v').key, kNoKeyCode);
  EXPECT_EQ(createStringForKey(process, 9), std::nullopt);
  EXPECT_EQ(host.log.lines, (std::deque<std::string>{"Could not find layout data",
                                                     "Could not find keyboard layout"}));
  EXPECT_EQ(host.console.lines, (std::deque<std::string>{"Could not find layout data\n",
                                                         "Could not find keyboard layout\n"}));
}

// The layout for menus is that of the current source, be it an input method's.
TEST_F(KeyCodes, TheLayoutOfTheCurrentSourceIsAnotherQuestion) {
  EXPECT_EQ(Get_KeyBoardLayout_Ptr(process), nullptr);
  host.textInputSources.current = std::make_shared<TISInputSource>();
  EXPECT_EQ(Get_KeyBoardLayout_Ptr(process), nullptr);
  host.textInputSources.current->kTISPropertyUnicodeKeyLayoutData = keyboard::dvorakLayout();
  EXPECT_EQ(*Get_KeyBoardLayout_Ptr(process), *keyboard::dvorakLayout());
}

TEST_F(KeyCodes, HeldKeysAreBitsOfTheKeyMap) {
  host.carbonEvents.heldKeys = [] {
    KeyMap keys{};
    keys[7] = 0x01;
    keys[15] = 0x80;
    return keys;
  };
  EXPECT_EQ(IsShiftKeyDown(process), 1);
  for (const auto& [key, down] :
       {std::pair{57, 0}, {55, 0}, {127, 1}, {126, 0}, {128, 0}, {65535, 0}}) {
    EXPECT_EQ(IsKeyDown(process, static_cast<std::uint16_t>(key)), down) << key;
  }
}

TEST_F(KeyCodes, EachModifierIsItsFlagAndTheConstantBitNone) {
  for (const auto& [word, flags] : {std::pair{0x0400, 0x10000},
                                    {0x0200, 0x20000},
                                    {0x1000, 0x40000},
                                    {0x0100, 0x100000},
                                    {0x0800, 0x80000},
                                    {0xE0FF, 0},
                                    {0x1FFF, 0x1F0000}}) {
    EXPECT_EQ(eventFlags(static_cast<std::uint16_t>(word)), static_cast<std::uint64_t>(flags));
  }
}

}  // namespace
}  // namespace quorvane
