// What an event meets on its way in that no scenario can set up: flags that nothing in the system
// sets, events of other classes, clients that throw.

#include <gtest/gtest.h>

#include <stdexcept>

#include "src/session/QBIM_IMK_KeyTime.h"
#include "src/session/QBIM_IMK_SessionEvent.h"
#include "src/session/QBIM_IMK_TextBuffer.h"
#include "tests/support/StartedInputMethod.h"

namespace quorvane {
namespace {

using field::Outcome;

struct EventEntry : testing::Test {
  ControllerState& state() { return method.instance.state<ControllerState>(); }
  CommitState& commit() { return method.instance.state<CommitState>(); }
  Outcome keyDown(char16_t character, std::uint32_t flags = 0) {
    return deliver(NSEventType::KeyDown, {character}, flags);
  }
  Outcome deliver(NSEventType type, std::u16string characters, std::uint32_t flags = 0) {
    return method.host.text.deliver({type, flags, 0, std::move(characters), nullptr});
  }
  std::int32_t sessionEvent(const CarbonEvent& event, std::uint8_t keyByte = 0) {
    return BIMSessionEvent(method.instance, nullptr, &event, keyByte);
  }
  /// The client's next call that begins so throws.
  void throwAt(std::string start) {
    method.host.text.onClientCall = [this,
                                     start = std::move(start)](const field::ClientCall& call) {
      if (!describe(call).starts_with(start)) return;
      method.host.text.onClientCall = {};
      throw std::runtime_error("the client is out of order");
    };
  }

  test::StartedInputMethod method;
};

TEST_F(EventEntry, TheOneShotFlagConsumesTheNextKeyDownBeforeAnythingElse) {
  state().INITED_FLAG = 0;
  state().KEYED_INITED_FLAG = 1;
  EXPECT_EQ(deliver(NSEventType::FlagsChanged, {}), Outcome::PassedOn);
  EXPECT_EQ(deliver(NSEventType::KeyUp, u"a"), Outcome::PassedOn);
  EXPECT_EQ(keyDown(u'a'), Outcome::Consumed);
  EXPECT_EQ(keyDown(u'b'), Outcome::PassedOn);
  EXPECT_EQ(method.document.text(), u"b");
}

TEST_F(EventEntry, APlainKeyIsRememberedUntilTheNextEvent) {
  for (const auto& [flags, plain] :
       {std::pair(0u, 1u), std::pair(NSEventModifierFlagShift, 1u),
        std::pair(NSEventModifierFlagFunction, 1u), std::pair(NSEventModifierFlagCommand, 0u),
        std::pair(NSEventModifierFlagControl, 0u), std::pair(NSEventModifierFlagOption, 0u),
        std::pair(NSEventModifierFlagCapsLock, 0u)}) {
    keyDown(u'a');
    keyDown(u'a', flags);
    EXPECT_EQ(state().Event_keyDownEvent, plain) << flags;
  }
  keyDown(u'a');
  deliver(NSEventType::FlagsChanged, {});
  EXPECT_EQ(state().Event_keyDownEvent, 0u);
}

TEST_F(EventEntry, AClientThatThrowsLeavesNothingBusyAndNothingWaiting) {
  throwAt("attributesForCharacterIndex");
  EXPECT_EQ(keyDown(u'a'), Outcome::PassedAfterError);
  EXPECT_EQ(state().handleEvent_BUSY, 0u);

  for (const char* call : {"selectedRange", "setMarkedText", "insertText"}) {
    throwAt(call);
    EXPECT_THROW(
        Get_QuorvaneInputController(method.instance).nsstring_commit_to_composition(u"A", {1}),
        std::runtime_error);
    EXPECT_EQ(method.host.mainApplication.field(22), 0u) << call;
  }

  commit().stringbuffer = u"parked";
  commit().ORIGINALREPLACE = {1};
  throwAt("insertText");
  keyDown(u'b');
  EXPECT_FALSE(commit().stringbuffer);
  EXPECT_EQ(commit().ORIGINALREPLACE, Utf16Units{0});
  EXPECT_EQ(Get_QuorvaneInputController(method.instance).composedBuffer(), u"");
  EXPECT_EQ(keyDown(u'c'), Outcome::PassedOn);
  EXPECT_EQ(method.sessionText(), "c");

  auto& switches = method.instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  switches = 0x11873;
  keyDown(u'w');
  switches = 0x11833;
  throwAt("attributesForCharacterIndex");
  EXPECT_EQ(keyDown(u'.'), Outcome::PassedAfterError) << "the word before it isn't its own";
  EXPECT_TRUE(method.document.text().ends_with(u"w."));
}

TEST_F(EventEntry, AnEventWithinAnotherCommitsAndLooksUpBeforeItIsTurnedAway) {
  auto& other = method.host.text.addDocument();
  method.host.text.onClientCall = [&](const auto&) {
    method.host.text.onClientCall = {};
    commit().stringbuffer = u"-";
    EXPECT_FALSE(method.controller.handleEvent({NSEventType::KeyDown, 0, 0, u"b", nullptr},
                                               &method.host.text.clientOf(other)));
  };
  EXPECT_EQ(keyDown(u'a'), Outcome::PassedOn);
  EXPECT_EQ(other.text(), u"-");
  EXPECT_EQ(method.session().clientID, identityOf(&method.host.text.clientOf(other)));
}

TEST_F(EventEntry, WhatIsParkedWaitsForAClient) {
  auto& controller = Get_QuorvaneInputController(method.instance);
  keyDown(u'a');
  commit().stringbuffer = u"-";
  controller.commitComposition(nullptr);
  EXPECT_TRUE(commit().stringbuffer);
  EXPECT_EQ(commit().commit_sender, &method.client);
  state().INITED_FLAG = 0;
  controller.commitComposition(&method.client);
  EXPECT_EQ(method.document.text(), u"a");
  state().INITED_FLAG = 1;
  controller.commitComposition(&method.client);
  EXPECT_EQ(method.document.text(), u"a-");
}

// Only a byte path can park what isn't UTF-8: the count is carried out, with nothing to insert.
TEST_F(EventEntry, ParkedBytesThatAreNotUtf8DeleteWhatTheyWereToReplace) {
  method.type("abc");
  commit().stringbufferHandle = {0xFF, 'x', 0};
  commit().ORIGINALREPLACE = {2};
  deliver(NSEventType::FlagsChanged, {});
  EXPECT_EQ(method.document.text(), u"a");
  EXPECT_TRUE(commit().stringbufferHandle.empty());
}

TEST_F(EventEntry, ASessionEventFillsInWhatTheCallerLeftOut) {
  CarbonEvent key{
      kEventClassKeyboard, kEventRawKeyDown, Seconds(10), std::uint8_t{'q'}, 0u, {}, {}};
  const auto separate = [&](Seconds time) {
    key.time = time;
    EXPECT_EQ(sessionEvent(key), 0);
    return method.instance.state<SessionEventState>().SeparateKeyPress;
  };
  EXPECT_TRUE(separate(Seconds(10)));
  EXPECT_FALSE(separate(Seconds(10.5))) << "not more than half a second";
  EXPECT_TRUE(separate(Seconds(11.001)));
  EXPECT_EQ(method.sessionText(), "qqq");
  key.kmod = rightControlKey;
  sessionEvent(key, 'r');
  EXPECT_EQ(method.sessionText(), "qqq");
}

TEST_F(EventEntry, AMouseDownForgetsTheTextAndTellsWhereSaveWithControlHeld) {
  method.type("ab");
  const CarbonEvent mouse{kEventClassMouse,      kEventMouseDown, {}, {}, {}, {},
                          HIPoint{-3.9, 40000.5}};
  method.host.carbonEvents.keyModifiers = controlKey;
  EXPECT_EQ(sessionEvent(mouse), 0);
  EXPECT_EQ(method.sessionText(), "ab");
  method.host.carbonEvents.keyModifiers = shiftKey;
  method.host.mainApplication.setField(31, 2);
  method.host.mainApplication.setField(12, "WRTR"_4cc);
  EXPECT_EQ(sessionEvent(mouse, 'x'), 0);
  EXPECT_EQ(method.host.mainApplication.field(1), 1u) << "its window is cancelled";
  EXPECT_EQ(method.sessionText(), "");
  EXPECT_EQ(method.session().editState, kEditCancelled);
  EXPECT_EQ(method.host.mainApplication.field(44), 0x9C40FFFDu);
  EXPECT_NE(method.host.sharedMemory.totalAttachments(), 0u) << "the record stays attached";
}

}  // namespace
}  // namespace quorvane
