// What scenarios can't show of completion's controller: objects that serve no client, what a key
// that throws leaves alone, points on screens, and a run loop that outlives the process.

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "src/completion/AnnotationWinController.h"
#include "src/completion/CompletionState.h"
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
  void shift(std::uint32_t flags) {
    controller.handleEvent({NSEventType::FlagsChanged, flags, 56, u"", nullptr}, &document);
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

TEST(Controller, MarkedTextHasTheLettersAsTypedWhateverTheCandidates) {
  Completing method;
  method.press(u"h");
  method.press(u"E");
  method.controller.candidateSelectionChanged(u"Hello");
  EXPECT_EQ(method.document.text(), u"hEllo");
}

TEST(Controller, WhatEndsAWordFirstTakesTheMarkedTextAwayOrNot) {
  struct Row {
    NSEvent event;
    bool cancels;
  };
  for (const Row& row :
       std::initializer_list<Row>{{{NSEventType::LeftMouseDown, 0, 0, u"", nullptr}, true},
                                  {{NSEventType::KeyDown, 0, 53, u"\x1b", nullptr}, true},
                                  {{NSEventType::KeyDown, 0, 18, u"1", nullptr}, true},
                                  {{NSEventType::FlagsChanged, 0, 56, u"", nullptr}, true},
                                  {{NSEventType::KeyDown, 0, 36, u"\r", nullptr}, false},
                                  {{NSEventType::KeyDown, 0, 49, u" ", nullptr}, false},
                                  {{NSEventType::KeyDown, 0, 43, u",", nullptr}, false}}) {
    Completing method;
    method.host.userDefaults.values["ShiftKeyToggle"] = true;
    method.press(u"t");
    if (row.event.type == NSEventType::FlagsChanged) method.shift(NSEventModifierFlagShift);
    method.host.journal.clear();
    method.controller.handleEvent(row.event, &method.document);
    const auto lines = method.host.journal.lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "cancelComposition"), row.cancels);
    EXPECT_TRUE(method.host.inputMethodKit.panel()->candidates().empty());
    EXPECT_TRUE(method.controller.originalBuffer().empty());
    const auto end = std::find(lines.begin(), lines.end(), "IMKCandidates clearSelection");
    EXPECT_EQ(
        std::vector(end, lines.end()),
        (std::vector<std::string>{"IMKCandidates clearSelection", "IMKCandidates hide",
                                  "IMKCandidates setCandidateData 0", "NSPanel setAlphaValue 0"}));
  }
}

TEST(Controller, AKeyThatThrowsChangesNeitherBuffersNorHistory) {
  Completing method;
  method.press(u"a");
  for (const char16_t* digit : {u"", u"9", u"4294967297", u"99999999999999999999"}) {
    EXPECT_THROW(method.press(digit), std::out_of_range);
  }
  EXPECT_EQ(method.controller.originalBuffer(), u"a");
  EXPECT_EQ(method.controller.composedBuffer(), u"a");

  // Shift, a key that throws, Shift let go: a tap, since only the key itself could tell otherwise.
  method.host.userDefaults.values["ShiftKeyToggle"] = true;
  method.shift(NSEventModifierFlagShift);
  EXPECT_THROW(method.press(u""), std::out_of_range);
  method.shift(0);
  EXPECT_EQ(method.document.text(), u"a");
  EXPECT_EQ(method.document.markedRange(), std::nullopt);
  EXPECT_FALSE(method.press(u"b"));

  // So is one between which the checker took a key.
  method.shift(NSEventModifierFlagShift);
  method.process.state<ControllerState>().KEYED_INITED_FLAG = 1;
  EXPECT_TRUE(method.press(u"b"));
  method.shift(0);
  EXPECT_TRUE(method.press(u"b")) << "completion is on again";
}

TEST(Controller, ASpaceBeforeAnyHighlightIsAllThatIsLeft) {
  Completing method;
  method.press(u"t");
  method.controller.setComposedBuffer(u"");
  method.press(u" ", 49);
  EXPECT_EQ(method.document.text(), u" ");
  EXPECT_EQ(method.controller.recognizedEvents(nullptr), 0x6001C06U);
}

TEST(Controller, AFocusLeavesDigitsNothingToChoose) {
  Completing method;
  method.press(u"t");
  method.controller.activateServer(&method.document);
  EXPECT_THROW(method.press(u"1"), std::out_of_range);
}

TEST(Controller, TheTwoPrivateInstancesHaveBuffersOfTheirOwn) {
  Completing method;
  InputController& functions = get_InputController_ptr(method.process);
  InputController& shared = InputController::sharedServer(method.process);
  EXPECT_EQ(&shared, &InputController::sharedServer(method.process));
  EXPECT_NE(&shared, &functions);
  Cancel_AutoCompleteSession_withoutspace(method.process);
  EXPECT_EQ(method.document.clientCalls(), 0u) << "no panel shows";

  method.press(u"a");
  const IMKCandidates& panel = *method.process.state<CompletionState>().sharedCandidates;
  ASSERT_TRUE(panel.isVisible());
  functions.setComposedBuffer(u"own");
  Cancel_AutoCompleteSession_withoutspace(method.process);
  EXPECT_FALSE(panel.isVisible());
  EXPECT_EQ(method.document.text(), u"own") << "over the marked text of the last client";
  EXPECT_EQ(method.controller.originalBuffer(), u"a")
      << "the client's controller knows nothing of it";
  CancelAutoCompleteSession(method.process);
  EXPECT_EQ(method.controller.originalBuffer(), u"a");
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
