// What scenarios can't show of completion's controller: objects that serve no client, points on
// screens, and a run loop that outlives the process.

#include <gtest/gtest.h>

#include <string>

#include "src/base/Text.h"
#include "src/completion/AnnotationWinController.h"
#include "src/completion/NSScreen_PointConversion.h"
#include "tests/support/EveryCall.h"
#include "tests/support/StartedInputMethod.h"

namespace quorvane {
namespace {

struct Completing : test::StartedInputMethod {
  Completing() { instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS = 0x11873; }

  bool press(std::u16string characters, std::uint16_t keyCode = 0) {
    return controller.handleEvent(
        {NSEventType::KeyDown, 0, keyCode, std::move(characters), nullptr}, &client);
  }
};

TEST(Controller, BeforeTheStartAndWithoutAClientNothingHappens) {
  memory::MemoryHost host;
  Instance instance{host.platform()};
  InputController controller{instance};
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
  Instance instance{host.platform()};
  InputController controller{instance};
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

/// Opens or closes one of the gates before completion.
using Gate = void (*)(Completing& method, bool opens);

template <unsigned Field, std::uint32_t Closed, std::uint32_t Open>
void field(Completing& method, bool opens) {
  method.host.mainApplication.setField(Field, opens ? Open : Closed);
}
template <memory::SegmentFate Fate>
void life(Completing& method, bool opens) {
  auto& mainApplication = method.host.mainApplication;
  opens ? mainApplication.launch() : mainApplication.vanish(memory::Notice::Queued, Fate);
}
void completionSwitch(Completing& method, bool opens) {
  method.instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS = opens ? 0x11873 : 0x11833;
}

TEST(Controller, EveryLetterStaysWhicheverGateClosesAndWhenever) {
  constexpr std::string_view kText = "the cat sat on it. ";
  constexpr Gate kGates[]{life<memory::SegmentFate::Removed>,
                          life<memory::SegmentFate::Kept>,
                          completionSwitch,
                          field<6, 0, 1>,
                          field<31, 1, 0>,
                          field<27, 1, 0>,
                          field<19, 100, 0>};
  for (std::size_t gate = 0; gate < std::size(kGates); ++gate) {
    SCOPED_TRACE("gate " + std::to_string(gate));
    test::atEveryCall(
        1 + gate, std::size(kGates), [] { return std::make_unique<Completing>(); },
        [&](Completing& method, std::uint64_t) { kGates[gate](method, false); },
        [&](Completing& method, std::uint64_t call) {
          for (std::size_t i = 0; i < kText.size(); ++i) {
            if (i == call % kText.size()) kGates[gate](method, true);
            method.host.runPending();
            method.type(kText.substr(i, 1));
          }
        },
        [&](Completing& method, std::uint64_t) {
          EXPECT_EQ(toUtf8(method.document.text()), kText);
        });
  }
}

TEST(AnnotationWindow, TheDelayedHidingFindsTheProcessGone) {
  memory::MemoryHost host;
  {
    Instance instance{host.platform()};
    InputMethodMain(instance, {});
    EXPECT_EQ(AnnotationWinController::sharedController(instance)->width(), 160);
  }
  host.journal.clear();
  host.clock.advanceSeconds(1);
  host.runPending();
  EXPECT_TRUE(host.journal.lines().empty());
}

TEST(NSScreen, TheMouseAndPointsOnScreens) {
  memory::MemoryHost host;
  Instance instance{host.platform()};
  host.screens.frames = {{0, 0, 100, 50}, {100, -10, 100, 60}};
  const auto screenAt = [&](NSPoint mouse) {
    host.screens.mouse = mouse;
    const auto screen = currentScreenForMouseLocation(instance);
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
