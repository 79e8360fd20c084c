// What a start finds in the bundle and in its surroundings, and what the delegate is told.

#include <gtest/gtest.h>

#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/menu/InputMenu.h"
#include "src/session/QuorvaneInputController_TextPosition.h"
#include "src/shell/InputApplicationDelegate.h"
#include "src/shell/QBIM_IMK_Start.h"
#include "src/shell/QuorvaneInputAppDelegate.h"
#include "tests/support/StartedInputMethod.h"

namespace quorvane {
namespace {

using test::StartedInputMethod;

struct Start : testing::Test {
  memory::MemoryHost host;
  Instance instance{host.platform()};
};

TEST_F(Start, TheMenuStringsAndTheGlyphsComeFromTheBundleOnce) {
  auto& state = instance.state<StartState>();
  const auto& menu = instance.state<InputMenuState>();
  host.resources.openResult = -1;
  Open_IMK_Resource(instance);
  EXPECT_EQ(host.log.lines.back(), "CAUTION: no refnum --  not open");
  host.resources.openResult = 7;
  host.resources.bundle[{"STR#"_4cc, 131}] = {0, 3, 4, 'O', 'p', 'e', 'n', 4, 'Q', 'u', 'i', 't'};
  host.resources.bundle[{"GLYP"_4cc, 15873}] = {1, 2, 3};
  Open_IMK_Resource(instance);
  EXPECT_EQ(menu.OpenMenuItemStr, "Open");
  EXPECT_EQ(menu.QuitMenuItemStr, "Quit");
  EXPECT_EQ(host.resources.CurResFile(), memory::MemoryResources::kApplicationFile);
  ASSERT_TRUE(state.gKeyGlyphHandle);
  EXPECT_FALSE(state.gKeyGlyphHandle->isResource) << "it outlives the map";
  const Handle glyphs = state.gKeyGlyphHandle;
  Open_IMK_Resource(instance);
  EXPECT_EQ(state.gKeyGlyphHandle, glyphs);
}

TEST_F(Start, WithoutTheActivityCallItGoesOnAndASecondOneChangesNothing) {
  host.application.hasBeginActivity = false;
  EXPECT_EQ(InputMethodMain(instance, {}), 0);
  for (const auto& line : host.journal.lines()) EXPECT_FALSE(line.starts_with("beginActivity"));
  EXPECT_EQ(instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS, 0x1800u);
  EXPECT_EQ(instance.state<SharedMemoryState>().SETMENUFLAG, 1u);
  const auto* head = instance.state<SessionState>().gSessionHandleStart;
  EXPECT_EQ(head->next->signature, 0u);
  Init_From_Delegate_applicationDidFinishLaunching(instance);
  EXPECT_EQ(instance.state<SessionState>().gSessionHandleStart, head);
  EXPECT_EQ(instance.state<SessionState>().records.size(), 2u);
  const auto lines = host.journal.lines();
  EXPECT_EQ(
      std::count_if(lines.begin(), lines.end(),
                    [](const auto& line) { return line.starts_with("CFMessagePortCreateLocal"); }),
      3)
      << "the menu's part runs once only";
}

TEST_F(Start, ToTheSmallDelegateAnyEndIsThatOfTheMainApplication) {
  InputApplicationDelegate delegate(instance);
  const auto& active = instance.state<LaunchServerState>().QORVMARPP_IS_RUNNING;
  NSRunningApplication application{7, "com.example.writer", false};
  delegate.QuorvaneLaunched({&application, {1, 7}});
  EXPECT_EQ(active, 0);
  application.bundleIdentifier = "com.tallowmere.quorvane";
  delegate.QuorvaneLaunched({&application, {1, 7}});
  EXPECT_EQ(active, 1);
  delegate.QuorvaneTerminated({});
  EXPECT_EQ(active, 0);
}

TEST_F(Start, TheDesktopIsTheScreenThatSomebodyWorksOn) {
  host.screens.frames.push_back({1440, 0, 800, 600});
  host.screens.main = 1;
  Get_DeskTopRectangle(instance, 0);
  EXPECT_EQ(instance.state<TextPositionState>().DeskTopRectangle.width, 800);
}

}  // namespace
}  // namespace quorvane
