// What scenarios can't show of completion's controller: objects that serve no client, points on
// screens, and a run loop that outlives the process.

#include <gtest/gtest.h>

#include <string>

#include "src/completion/AnnotationWinController.h"
#include "src/completion/NSScreen_PointConversion.h"
#include "tools/support/StartedInputMethod.h"

namespace quorvane {
namespace {

struct Completing : test::StartedInputMethod {
  Completing() { process.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS = 0x11873; }

  bool press(std::u16string characters, std::uint16_t keyCode = 0) {
    return controller.handleEvent(
        {NSEventType::KeyDown, 0, keyCode, std::move(characters), nullptr}, &document);
  }
};

TEST(Controller, BeforeTheStartAndWithoutAClientNothingHappens) {
  memory::MemoryHost host;
  Process process{host.platform()};
  InputController controller{process};
  controller.activateServer(nullptr);
  EXPECT_FALSE(controller.handleEvent({NSEventType::KeyDown, 0, 0, u"a", nullptr}, nullptr));
  EXPECT_TRUE(controller.onKeyEvent({NSEventType::KeyDown, 0, 0, u"a", nullptr}, nullptr));
  EXPECT_TRUE(controller.candidates(nullptr).empty());
  controller.candidateSelectionChanged(u"ab");
  controller.showAnnotation(u"ab");
  EXPECT_EQ(controller.calculatePositionOfTranslationWindow(), (NSPoint{0, -8}))
      << "no panel, no window, no line";
  controller.candidateSelected(u"ab");
  EXPECT_EQ(controller.originalBuffer(), u"");
  controller.deactivateServer(nullptr);
}

TEST(Controller, CountsLettersOrTheHighlightAndDeletesNoMore) {
  memory::MemoryHost host;
  Process process{host.platform()};
  InputController controller{process};
  const auto deletions = [&controller] {
    controller.setOriginalBuffer(u"abcdef");
    int count = 0;
    while (controller.deleteBackward(nullptr)) ++count;
    EXPECT_EQ(controller.composedBuffer(), controller.originalBuffer()) << "nothing is chosen";
    return count;
  };
  controller.originalBufferAppend(u"th", nullptr);
  EXPECT_EQ(deletions(), 1);
  controller.candidateSelectionChanged(u"the");
  EXPECT_EQ(deletions(), 3);
  controller.candidateSelectionChanged(u"the");
  controller.reset();
  EXPECT_FALSE(controller.deleteBackward(nullptr));
}

TEST(Controller, ASpaceBeforeAnyHighlightIsAllThatIsLeft) {
  Completing method;
  method.press(u"t");
  method.controller.setComposedBuffer(u"");
  method.press(u" ", 49);
  EXPECT_EQ(method.document.text(), u" ");
  EXPECT_EQ(method.controller.recognizedEvents(nullptr), 0x6001C06U);
}

TEST(Controller, TheTwoPrivateInstancesHaveBuffersOfTheirOwn) {
  Completing method;
  InputController& functions = get_InputController_ptr(method.process);
  EXPECT_NE(&InputController::sharedServer(method.process), &functions);
  method.press(u"a");
  functions.setComposedBuffer(u"own");
  Cancel_AutoCompleteSession_withoutspace(method.process);
  EXPECT_EQ(method.document.text(), u"own") << "over the marked text of the last client";
  EXPECT_EQ(method.controller.originalBuffer(), u"a") << "its controller knows nothing of it";
}

TEST(AnnotationWindow, TheDelayedHidingFindsTheProcessGone) {
  memory::MemoryHost host;
  {
    Process process{host.platform()};
    InputMethodMain(process, {});
    EXPECT_EQ(AnnotationWinController::sharedController(process)->width(), 160);
  }
  host.journal.clear();
  host.clock.advanceSeconds(1);
  host.runPending();
  EXPECT_TRUE(host.journal.lines().empty());
}

TEST(NSScreen, TheMouseAndPointsOnScreens) {
  memory::MemoryHost host;
  Process process{host.platform()};
  host.screens.frames = {{0, 0, 100, 50}, {100, -10, 100, 60}};
  const auto screenAt = [&](NSPoint mouse) {
    host.screens.mouse = mouse;
    const auto screen = currentScreenForMouseLocation(process);
    return screen ? screen->x : -1;
  };
  EXPECT_EQ(screenAt({0, 50}), 0) << "left and top edge are inside";
  EXPECT_EQ(screenAt({100, 50}), 100);
  EXPECT_EQ(screenAt({5, 0}), -1) << "the bottom edge isn't";
  EXPECT_EQ(screenAt({200, 50}), -1);
  const NSRect left{-300, -20, 300, 200};
  EXPECT_EQ(convertPointToScreenCoordinates(left, {-100, 30}), (NSPoint{200, 50}));
  EXPECT_EQ(convertPointToScreenCoordinates(left, {500, -30}), (NSPoint{200, -10}));
  EXPECT_EQ(convertPointToScreenCoordinates({}, {16777217, 0.1}),
            (NSPoint{16777216, static_cast<double>(0.1F)}));
  EXPECT_EQ(flipPoint(left, {7, 30}), (NSPoint{7, 170}));
}

}  // namespace
}  // namespace quorvane
