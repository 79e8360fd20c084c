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
  for (const char* const name : {"com.example.writer", "com.tallowmere.quorvane"}) {
    EXPECT_EQ(active, 0) << "before " << name;
    const NSRunningApplication application{7, name, false};
    delegate.QuorvaneLaunched({&application, {1, 7}});
  }
  EXPECT_EQ(active, 1);
  EXPECT_EQ(instance.state<AppDelegateState>().App_Permissions_Setting, 1U);
  QuorvaneInputAppDelegate(instance).Frontappchanged({nullptr, {1, 7}});
  EXPECT_EQ(instance.state<PresenceState>().frontapp_psn, ProcessSerialNumber{});
  delegate.QuorvaneTerminated({});
  EXPECT_EQ(active, 0);
}

TEST_F(Start, APathThatIsTooLongOrNotAsciiIsntLaunched) {
  const auto last = [&] { return host.log.lines.back(); };
  BIMLaunchWithFSRef(instance, nullptr);
  EXPECT_EQ(last(), "Quorvane Server NOT FOUND");
  for (const std::size_t size : {160U, 161U}) {
    const std::string path = "/" + std::string(size - 1, 's');
    FSRef ref;
    host.files.makeFolder(path);
    host.files.CFURLGetFSRef(path, ref);
    BIMLaunchWithFSRef(instance, &ref);
  }
  EXPECT_EQ(last(), "*********  Quorvane Server failed to launch");
  for (const std::string& name : {std::string(92, 'm'), std::string(93, 'm'), std::string("é")}) {
    host.bundle.bundles["com.tallowmere.inputmethod.Quorvane"] = "/" + name;
    host.files.makeFolder("/" + name + "/SharedSupport/Quorvane_menulet.app");
    LaunchQuorvaneMenulet(instance);
    EXPECT_EQ(last(), "*********  Quorvane Menulet failed to launch");
  }
  const auto launched = [](const auto& line) { return line.starts_with("launchApplication"); };
  EXPECT_EQ(std::ranges::count_if(host.journal.lines(), launched), 2);
  InputController(instance).showIMEPreferences(nullptr);
  EXPECT_EQ(host.journal.lines().back(),
            "openURLs http://localhost:62718/index.html com.apple.Safari 0x10000");
}

TEST_F(Start, TheDesktopIsTheScreenThatSomebodyWorksOn) {
  host.screens.frames.push_back({1440, 0, 800, 600});
  host.screens.main = 1;
  Get_DeskTopRectangle(instance, 0);
  EXPECT_EQ(instance.state<TextPositionState>().DeskTopRectangle.width, 800);
}

}  // namespace
}  // namespace quorvane
