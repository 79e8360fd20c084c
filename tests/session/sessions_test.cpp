// What no key reaches by itself: sessions that are gone, without text, or that share an identity.

#include <gtest/gtest.h>

#include "src/base/KeyBytes.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/QBIM_IMK_Interactive.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/QBIM_IMK_TextBuffer.h"
#include "tests/support/StartedInputMethod.h"

namespace quorvane {
namespace {

using test::StartedInputMethod;

struct Sessions : testing::Test {
  std::size_t sessionCount() {
    std::size_t count = 0;
    for (auto* session = method.instance.state<SessionState>().gSessionHandleStart;
         session != nullptr; session = session->next) {
      ++count;
    }
    return count;
  }
  void lookUp(std::initializer_list<std::uint32_t> clients) {
    for (const std::uint32_t client : clients) {
      Get_SessionHandleFromID(method.instance, ClientID{client});
    }
  }

  StartedInputMethod method;
};
using Suspension = Sessions;

TEST_F(Sessions, HousekeepingReapsGoneApplicationsButNeverTheHead) {
  const std::size_t atStart = sessionCount();
  lookUp({10, 11, 12});
  auto& sessions = method.instance.state<SessionState>();
  sessions.gSessionHandleStart->signature = "GONE"_4cc;
  for (auto* session = sessions.gSessionHandleStart->next; session != nullptr;
       session = session->next) {
    if (session->clientID == ClientID{10} || session->clientID == ClientID{11})
      session->signature = "GONE"_4cc;
  }
  Check_App_HouseKeeping(method.instance);
  EXPECT_EQ(sessionCount(), atStart + 1);
  EXPECT_EQ(sessions.gSessionHandleStart->signature, "GONE"_4cc);
}

TEST_F(Sessions, WithoutASessionAKeyMakesOneThatIsInNoList) {
  const std::size_t listed = sessionCount();
  auto& active = method.instance.state<SessionState>().gActiveSession;
  active = nullptr;
  BIMHandleInput(method.instance, nullptr, 'a');
  ASSERT_NE(active, nullptr);
  BIMHandleInput(method.instance, active, 'b');
  EXPECT_EQ(method.sessionText(), "ab");
  EXPECT_EQ(sessionCount(), listed);

  active = nullptr;
  method.bringMainApplicationToFront();
  EXPECT_EQ(BIMHandleInput(method.instance, nullptr, 'a'), 0);
  EXPECT_EQ(active, nullptr) << "the main application is in front";
}

TEST_F(Sessions, NothingIsToldOfARemovalWhileTheMainApplicationIsInFront) {
  method.type("a");
  const auto handle = static_cast<std::uint32_t>(method.session().handle);
  method.bringMainApplicationToFront();
  ASSERT_EQ(DeleteSessionHandleID(method.instance, method.session().clientID), 1);
  EXPECT_EQ(method.host.mainApplication.field(34), handle);
}

TEST_F(Sessions, WhatCantBeNamedCancelsNoWindow) {
  method.host.sharedMemory.failAttach(880, memory::AttachFailure::Null);
  MasterCloseToolRecPtr(method.instance);
  const auto& log = method.host.log.lines;
  const std::size_t before = log.size();
  Set_ToolSessionhandle(method.instance, &method.session());
  EXPECT_EQ(log.size(), before + 1) << "one look for the record";
}

TEST_F(Sessions, WithoutTextEveryOperationOnItDoesNothing) {
  auto& session = method.session();
  session.sessionText.reset();
  method.type("abc ");
  EXPECT_EQ(session.length, 0u);
  EXPECT_EQ(method.document.text(), u"abc ");
}

TEST_F(Suspension, ComparesTheLow16BitsOfTheSessionAndEndsForAnother) {
  auto& main = method.host.mainApplication;
  method.type("a");
  main.setField(6, 0);
  const auto handle = static_cast<std::uint32_t>(method.session().handle);
  const auto suspendedKey = [&](std::uint32_t sessionValue) {
    main.setField(19, 2);
    main.setField(20, 0);
    main.setField(30, 4);
    main.setField(34, sessionValue);
    return CallInteractiveEventHandler(method.instance, &method.session(), 'b', false);
  };
  EXPECT_EQ(suspendedKey(handle + 0x50000), 1);
  EXPECT_EQ(main.field(30), 4u);
  EXPECT_EQ(suspendedKey(handle + 1), 0);
  EXPECT_EQ(main.field(30), 0u);
}

TEST(Publication, OneSwitchOfInteractiveCheckingIsEnough) {
  StartedInputMethod method;
  for (const std::uint32_t on : {0x1u, 0x2u, 0x10u, 0x20u, 0x40u}) {
    method.instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS = 0xFF8C | on;
    const std::string before = method.host.mainApplication.published().text;
    method.type("a");
    EXPECT_EQ(method.host.mainApplication.published().text, before + "a") << on;
  }
}

TEST(Publication, TextThatComesBackOutOfBoundsIsTakenAsFarAsThereIsRoom) {
  struct Case {
    std::uint32_t cursor;
    std::uint32_t length;
    std::uint32_t takenCursor;
    std::uint32_t takenLength;
  };
  constexpr Case kCases[] = {{0, 0, 0, 0},         {384, 384, 384, 384},       {2, 384, 2, 384},
                             {385, 385, 384, 384}, {2, 385, 2, 384},           {3, 2, 3, 3},
                             {~0u, ~0u, 384, 384}, {0x7fffffff, 10, 384, 384}, {9, ~0u, 9, 384}};
  for (const auto& [cursor, length, takenCursor, takenLength] : kCases) {
    StartedInputMethod method;
    method.type("ab");
    InteractiveTextRecord record(method.instance);
    for (unsigned i = 0; i < 4; ++i) {
      record.bytes()[i] = static_cast<std::uint8_t>(cursor >> (24 - 8 * i));
      record.bytes()[4 + i] = static_cast<std::uint8_t>(length >> (24 - 8 * i));
    }
    record.bytes()[8] = 'z';
    EXPECT_EQ(CheckEditReplacements(method.instance, &method.session()), 1);
    EXPECT_EQ(method.session().cursor, takenCursor) << cursor;
    EXPECT_EQ(method.session().length, takenLength) << length;
    EXPECT_EQ(method.session().sessionText->front(), takenCursor == 0 ? 'a' : 'z');
    const bool bounded = takenCursor != cursor || takenLength != length;
    EXPECT_EQ(method.host.log.lines.back().starts_with("CheckEditReplacements bounded"), bounded);
    BIMHandleInput(method.instance, &method.session(), 'c');
    BIMHandleInput(method.instance, &method.session(), kBackspaceKey);
  }
}

}  // namespace
}  // namespace quorvane
