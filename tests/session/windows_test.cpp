// What happens while a window is asked about a key, and at every moment of one.

#include <gtest/gtest.h>

#include "src/session/QBIM_IMK_Clipboard.h"
#include "src/session/QBIM_IMK_WindowCancel.h"
#include "src/session/QBIM_IMK_WindowClick.h"
#include "src/session/QBIM_IMK_WindowKeys.h"
#include "tests/support/EveryCall.h"
#include "tests/support/StartedInputMethod.h"

namespace quorvane {
namespace {

/// A popup, long after the last key, with every smart character on.
struct Popup : test::StartedInputMethod {
  Popup() {
    main.setField(31, kPopupWindow);
    main.setField(38, 7);
    host.clock.advanceSeconds(1);
  }
  /// Runs at the next message to the main application.
  void atMessage(std::function<void()> action) {
    auto& server = *host.messagePorts.server(memory::MemoryMainApplication::kServerPort);
    server.answer = [&server, action = std::move(action)](auto, const auto&) {
      const auto running = std::exchange(server.answer, {});
      action();
      return std::optional<CFData>(CFData{});
    };
  }
  void keyDown(char16_t character) {
    host.text.deliver({NSEventType::KeyDown, 0, 0, {character}, nullptr});
  }
  void disposeOfEverySession() {
    for (auto* at = sessions.gSessionHandleStart; at->next != nullptr;) {
      if (DeleteSessionHandleID(instance, at->next->clientID) == 0) at = at->next;
    }
  }

  memory::MemoryMainApplication& main{host.mainApplication};
  SessionState& sessions{instance.state<SessionState>()};
};

TEST(Windows, AreAskedNothingWithinTheSameQuestion) {
  Popup popup;
  std::int32_t nested = 1;
  popup.main.setField(26, '1');
  popup.atMessage([&] { nested = Get_Control_KeyPress(popup.instance); });
  EXPECT_EQ(Get_Control_KeyPress(popup.instance), 1);
  EXPECT_EQ(std::exchange(nested, 1), 0);
  popup.main.setField(31, 2);
  popup.atMessage([&] { nested = Check_InteractiveWindowKeys2(popup.instance, 0); });
  EXPECT_EQ(Check_InteractiveWindowKeys2(popup.instance, shiftKey), 1);
  EXPECT_EQ(std::exchange(nested, 1), 0);
  EXPECT_EQ(popup.main.field(26), 1u) << "the key of the outer question";
  popup.host.journal.beforeCall(1, [&] { nested = Get_MouseDown_Cancel(popup.instance); });
  EXPECT_EQ(Get_MouseDown_Cancel(popup.instance), 1);
  EXPECT_EQ(nested, 0);
}

TEST(Windows, RefuseWhatNoKeyBrings) {
  Popup popup;
  EXPECT_EQ(Check_MouseDown_ForWindowCancel(popup.instance, 1), 0);
  popup.main.setField(26, '1');
  popup.main.setField(27, 1);
  EXPECT_EQ(Get_Control_KeyPress(popup.instance), 0) << "a restore comes first";
  EXPECT_EQ(Reset_Clip(popup.instance, cmdKey), 1);
  EXPECT_EQ(Reset_Clip(popup.instance, cmdKey), 0) << "it is due already";
  popup.main.setField(27, 0);
  popup.main.setField(31, 2);
  EXPECT_EQ(Check_IntractiveWindowKeys(popup.instance, '0', optionKey), 1);
  EXPECT_EQ(Check_IntractiveWindowKeys(popup.instance, '0', shiftKey), 0);
  popup.bringMainApplicationToFront();
  EXPECT_EQ(Get_Control_KeyPress(popup.instance), 0);
}

TEST(Windows, SessionsThatGoDuringAKeyStayUntilItsEnd) {
  Popup popup;
  popup.keyDown(u'a');
  std::size_t kept = 0;
  popup.atMessage([&] {
    Get_SessionHandleFromID(popup.instance, ClientID{10});
    Get_SessionHandleFromID(popup.instance, ClientID{11});
    popup.disposeOfEverySession();
    kept = popup.sessions.retired.size();
  });
  popup.keyDown(u'\t');
  EXPECT_GE(kept, 3u) << "that of the key, and those looked up meanwhile";
  EXPECT_EQ(popup.sessions.retired.size(), 1u) << "the active one";
  popup.keyDown(u'5');
  EXPECT_EQ(popup.sessions.retired.size(), 0u);
  EXPECT_EQ(popup.document.text(), u"A\t5");
}

// Wherever the world changes, nothing stays locked, and typing goes on.
TEST(Windows, SessionsAndMainApplicationMayGoAtEveryCall) {
  for (const char16_t key : u"1\t\"a\x1b") {
    SCOPED_TRACE(std::string("key ") + static_cast<char>(key));
    test::atEveryCall(
        1, 1, [] { return std::make_unique<Popup>(); },
        [](Popup& popup, std::uint64_t call) {
          popup.disposeOfEverySession();
          if (call % 2 == 0) popup.main.vanish();
        },
        [&](Popup& popup, std::uint64_t) { popup.keyDown(key); },
        [](Popup& popup, std::uint64_t) {
          const std::u16string text = popup.document.text();
          popup.keyDown(u'5');
          EXPECT_EQ(popup.document.text(), text + u'5');
          EXPECT_EQ(popup.sessions.users + popup.instance.state<WindowKeysState>().NORECURSION, 0u);
          EXPECT_TRUE(popup.host.text.errors().empty());
        });
  }
}

}  // namespace
}  // namespace quorvane
