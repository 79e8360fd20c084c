// The way of an event: controller, document, posted events, and what is thrown on the way.

#include "hosts/field/TextApplication.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "hosts/memory/MemoryHost.h"

namespace quorvane::field {
namespace {

constexpr NSRange kWhereItIs{NSNotFound, NSNotFound};
constexpr std::uint32_t kAllEvents = 0x6001c06;

/// Does what the test says, and notes what it was told.
struct ScriptedController : IMKInputController {
  bool handleEvent(const NSEvent& event, IMKTextInput* client) override {
    carbon = event.eventRef ? std::optional(*event.eventRef) : std::nullopt;
    told.push_back(std::to_string(static_cast<int>(event.type)) + ":" +
                   std::to_string(event.keyCode));
    return onEvent && onEvent(event, *client);
  }
  void activateServer(IMKTextInput*) override { told.push_back("activate"); }
  void deactivateServer(IMKTextInput*) override { told.push_back("deactivate"); }
  std::uint32_t recognizedEvents(IMKTextInput*) override { return recognized; }

  std::function<bool(const NSEvent&, IMKTextInput&)> onEvent;
  std::optional<CarbonEvent> carbon;
  std::uint32_t recognized = kAllEvents;
  std::vector<std::string> told;
};

class TextApplicationTest : public testing::Test {
 protected:
  TextApplicationTest() {
    host.text.setController(&controller);
    host.text.focus(&document);
    controller.told.clear();
  }
  void postShift() {
    host.queue.IOHIDPostEvent(1, NX_FLAGSCHANGED, {}, 2, NSEventModifierFlagShift,
                              kIOHIDSetGlobalEventFlags);
    host.queue.IOHIDPostEvent(1, NX_FLAGSCHANGED, {}, 2, 0, kIOHIDSetGlobalEventFlags);
  }

  memory::MemoryHost host;
  ScriptedController controller;
  Document& document = host.text.addDocument();
};

TEST_F(TextApplicationTest, CarbonRecordStandsBehindTheEvent) {
  host.text.press(u"A", 0, NSEventModifierFlagShift | NSEventModifierFlagCapsLock);
  ASSERT_TRUE(controller.carbon);
  EXPECT_EQ(controller.carbon->kind, kEventRawKeyUp);
  EXPECT_EQ(controller.carbon->kchr, std::uint8_t{'A'});
  EXPECT_EQ(controller.carbon->kmod, shiftKey | alphaLock);
  EXPECT_EQ(controller.carbon->kcod, 0U);
  EXPECT_DOUBLE_EQ(controller.carbon->time.count(), static_cast<double>(host.clock.now()) / 1e9);
  EXPECT_EQ(host.carbonEvents.GetCurrentKeyModifiers(), shiftKey | alphaLock);
  host.text.deliver({NSEventType::KeyDown, 0, 14, u"\u00E9", nullptr}, {true, true});
  EXPECT_EQ(controller.carbon->kind, kEventRawKeyRepeat);
  EXPECT_EQ(controller.carbon->kchr, std::uint8_t{0});
}

TEST_F(TextApplicationTest, EndlessPostingIsCutOffAndRecorded) {
  controller.onEvent = [this](const NSEvent&, IMKTextInput&) {
    postShift();
    return false;
  };
  host.text.deliver({NSEventType::KeyDown, 0, 0, u"a", nullptr});
  EXPECT_EQ(controller.told.size(), TextApplication::kPostedEventLimit + 1);
  EXPECT_EQ(host.queue.size(), 0U);
  EXPECT_EQ(host.text.errors().size(), 1U);
  EXPECT_EQ(document.text(), u"a");
}

TEST_F(TextApplicationTest, WhatIsThrownCostsNoKeyAndDoublesNone) {
  const struct {
    const char* name;
    std::function<void(IMKTextInput&)> calls;
    Outcome outcome;
    const char16_t* text;
  } cases[] = {
      {"before any call", [](IMKTextInput&) {}, Outcome::PassedAfterError, u"a"},
      {"only asked", [](IMKTextInput& client) { client.selectedRange(); },
       Outcome::PassedAfterError, u"a"},
      {"a refused change",
       [](IMKTextInput& client) {
         client.insertText(u"X", {9, 1});
       },
       Outcome::PassedAfterError, u"a"},
      {"given what was owed",
       [this](IMKTextInput& client) {
         client.insertText(u"X", kWhereItIs);
         host.inputMethodKit.ownTextFollows();
       },
       Outcome::PassedAfterError, u"Xa"},
      {"changed already", [](IMKTextInput& client) { client.insertText(u"X", kWhereItIs); },
       Outcome::ConsumedAfterError, u"X"},
  };
  for (const auto& each : cases) {
    document.setText(u"");
    controller.onEvent = [&](const NSEvent& event, IMKTextInput& client) -> bool {
      if (event.type == NSEventType::KeyUp) throw 7;
      each.calls(client);
      throw std::runtime_error("out of luck");
    };
    EXPECT_EQ(host.text.type(U'a'), each.outcome) << each.name;
    EXPECT_EQ(document.text(), each.text) << each.name;
  }
  EXPECT_EQ(host.text.errors().size(), 10U);
  EXPECT_EQ(host.log.lines.front(), "* * * the input method threw: out of luck");
}

TEST_F(TextApplicationTest, NestedEventTakesTheSameWayAndAnswersForItself) {
  controller.onEvent = [this](const NSEvent& event, IMKTextInput& client) -> bool {
    if (event.characters == u"b") {
      client.insertText(u"B", kWhereItIs);
      return true;
    }
    EXPECT_TRUE(host.text.delivering());
    postShift();
    EXPECT_EQ(host.text.deliver({NSEventType::KeyDown, 0, 11, u"b", nullptr}), Outcome::Consumed);
    EXPECT_EQ(host.queue.size(), 2U) << "posted events wait for the outermost event";
    throw std::runtime_error("after the nested event");
  };
  controller.recognized = 1U << 10;
  host.text.setController(&controller);
  host.text.type(U'a');
  EXPECT_EQ(document.text(), u"Ba") << "the nested change isn't the outer event's";
  EXPECT_EQ(controller.told.size(), 2U) << "only wanted events are offered";
  EXPECT_FALSE(host.text.delivering());
}

}  // namespace
}  // namespace quorvane::field
