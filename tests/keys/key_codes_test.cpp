#include <gtest/gtest.h>

#include "hosts/keyboard/StandardLayouts.h"
#include "hosts/memory/MemoryHost.h"
#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/keys/AsciiToKeyCode.h"
#include "src/keys/QBIM_IMK_EventPosting.h"
#include "src/keys/QBIM_Paste_IMK.h"

namespace quorvane {
namespace {

struct KeyCodes : testing::Test {
  /// Modifier word and key code.
  std::pair<int, int> find(std::uint32_t character) {
    std::uint16_t word = 0;
    const std::uint16_t key = ComposeEventMessage(instance, character, &word);
    return {word, key};
  }
  std::int32_t frontProcess(ProcessSerialNumber psn, const ProcessSerialNumber& expected) {
    const std::int32_t found = Get_FrontProcessSerial(instance, psn);
    EXPECT_EQ(psn, expected);
    return found;
  }

  memory::MemoryHost host;
  Instance instance{host.platform()};
};

// Option is tried before shift, and the bare key never.
TEST_F(KeyCodes, ACharacterHasItsKeyAndTheFirstModifiersThatYieldIt) {
  EXPECT_EQ(find('A'), (std::pair{0x0280, 0}));
  EXPECT_EQ(find('a'), (std::pair{0x0080, 0}));
  EXPECT_EQ(find('1'), (std::pair{0x0880, 18})) << "option leaves it as it is";
  EXPECT_EQ(find(0x10041), (std::pair{0x0280, 0})) << "cut to 16 bits";
  EXPECT_EQ(find(0xE5), (std::pair{0x0080, 65535})) << "though it is there";
  EXPECT_EQ(Get_keyCodeForChar(instance, 'B', nullptr), 11);
  EXPECT_EQ(AsciiToKeyCode(instance, 0x0142), 11) << "the low byte";
  EXPECT_EQ(Post_KeyEvent(instance, 0x1280, 0), 0x1280);
  keyboard::LayoutTables onlyWithBoth;
  onlyWithBoth.tables.resize(2);
  onlyWithBoth.tables[1][7].text.assign(1, u'%');
  onlyWithBoth.tableOf[(shiftKey | optionKey) >> 8] = 1;
  host.useLayout(writeLayout(onlyWithBoth));
  EXPECT_EQ(find('%'), (std::pair{0x0A80, 7}));
}

TEST_F(KeyCodes, EachQuestionIsAnsweredForTheLayoutOfThatMoment) {
  EXPECT_EQ(createStringForKey(instance, 9), u"v");
  host.useLayout(keyboard::dvorakLayout());
  EXPECT_EQ(find('v').second, 47);
  EXPECT_EQ(createStringForKey(instance, 9), u"k");
  EXPECT_EQ(createStringForKey(instance, 500), std::u16string(1, u'\0')) << "always one unit";
  EXPECT_EQ(Get_KeyBoardLayout_Ptr(instance), nullptr) << "of the input method, which is current";
  for (const auto& none : {std::make_shared<TISInputSource>(), TISInputSourceRef{}}) {
    host.textInputSources.layout = none;
    EXPECT_EQ(find('v').second, 65535);
    EXPECT_EQ(createStringForKey(instance, 9), std::nullopt);
    const std::string_view missing = none ? "layout data" : "keyboard layout";
    EXPECT_EQ(host.log.lines.back(), "Could not find " + std::string(missing));
    EXPECT_EQ(host.console.lines.back(), host.log.lines.back() + "\n");
  }
}

TEST_F(KeyCodes, HeldKeysAreBitsOfTheKeyMap) {
  host.carbonEvents.heldKeys = [] {
    return KeyMap{0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 128};
  };
  EXPECT_EQ(IsShiftKeyDown(instance), 1);
  for (const std::uint16_t key : std::initializer_list<std::uint16_t>{55, 57, 126, 128, 65535})
    EXPECT_EQ(IsKeyDown(instance, key), 0);
  EXPECT_EQ(IsKeyDown(instance, 127), 1);
}

// The process id leads there, or else the Process Manager's own answer.
TEST_F(KeyCodes, TheTargetStaysAsItWasWhereNothingIsInFront) {
  EXPECT_EQ(frontProcess({7, 7}, {1, 8193}), 1);
  memory::MemoryProcess added;
  added.pid = 77;
  const auto other = host.processes.add(added, memory::Notice::Missed);
  host.processes.setFront(other, memory::Notice::Missed);
  host.processes.find(other)->pid = 78;  // so that 77 leads nowhere
  EXPECT_EQ(frontProcess({7, 7}, other), 1);
  EXPECT_EQ(host.log.lines.back(), "ERR GetProcessForPID -600");
  host.processes.find(other)->signature = 0;
  EXPECT_EQ(frontProcess({7, 7}, {7, 7}), 0) << "an application without a signature";
  host.processes.getFrontProcessFails = true;
  instance.state<PresenceState>().frontapp_signature = "WRTR"_4cc;
  EXPECT_EQ(frontProcess({7, 7}, {7, 7}), 0);
}

TEST_F(KeyCodes, ASearchBeginsAtTheFirstProcessAndEndsThoughThereAreAlwaysMore) {
  ProcessSerialNumber psn{1, 8193};
  ProcessInfoRec info;
  ProcessEntry entry{.signature = "WRTR"_4cc};
  EXPECT_EQ(FINDAPPPROCESS(instance, psn, info, {&entry, 1}), 1);
  EXPECT_EQ(psn, (ProcessSerialNumber{1, 8193}));
  entry.signature = "MAIL"_4cc;
  const std::function<void()> grow = [&] {
    host.processes.add({}, memory::Notice::Queued);
    host.journal.beforeCall(1, grow);
  };
  grow();
  EXPECT_EQ(FINDAPPPROCESS(instance, psn, info, {&entry, 1}), 0);
  host.journal.beforeCall(0, {});
}

}  // namespace
}  // namespace quorvane
