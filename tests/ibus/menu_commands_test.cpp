// Commands of the Input Menu, from the panel to the text of real programs and back.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <optional>

#include "tests/support/desktop/Applications.h"

namespace quorvane::tests {
namespace {

class MenuCommands : public testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    if (!kAnswersInTime) GTEST_SKIP() << kTooSlow;
    if (const std::string why = HeadlessDesktop::missing(); !why.empty()) GTEST_SKIP() << why;
    desktop.emplace(DesktopOptions{
        .engine = QUORVANE_PROGRAM " server --ibus --log",
        .variables = {"QUORVANE_KEY_OFFSET=" +
                      std::to_string(0x20000000U + 32U * static_cast<unsigned>(::getpid()))}});
    ASSERT_TRUE(eventually([&] { return announcementsIn(meeting()) == 2; })) << desktop->log();
  }
  void TearDown() override {
    if (desktop) Program(desktop->launch({QUORVANE_PROGRAM, "stop"})).wait();
  }

  [[nodiscard]] std::filesystem::path meeting() const {
    return desktop->file("XDG_RUNTIME_DIR") / "quorvane";
  }
  /// By the menu as the panel shows it from the next focus on.
  template <class Action>
  void choose(const std::string& item, Action focus) {
    Lines& panel = desktop->panel();
    desktop->focusBy(focus);
    std::string line;
    do line = panel.await("property ");
    while (!line.ends_with(" 1 " + item));
    panel.send("property " + line.substr(line.find('m'), line.find(' ') - line.find('m')) + " 0");
  }
  void pressInWindow(char key) {
    sockaddr_un port{AF_UNIX, {}};
    const auto path = meeting() / "Q7T2M4K9W1.com.tallowmere.Quorvane.window";
    path.native().copy(port.sun_path, sizeof port.sun_path - 1);
    const int connection = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    const std::array<char, 8> message{0, 0, 0, key};
    ASSERT_EQ(::connect(connection, reinterpret_cast<const sockaddr*>(&port), sizeof port), 0);
    ASSERT_EQ(::send(connection, message.data(), message.size(), 0), 8);
    ::close(connection);
  }
  bool windowShows(const std::string& text) {
    return eventually(
        [&] { return contentOf(meeting() / "window").find(text) != std::string::npos; });
  }

  bool logSays(const std::string& text) { return desktop->log().find(text) != std::string::npos; }
  /// Into the first field, once the clipboard has it.
  bool pastes(GtkClient& client, const std::string& text) {
    desktop->focusBy([&] { client.send("focus 0"); });
    return eventually([&] {
      client.send("set ");
      desktop->screen().press("Control_L+v");
      return static_cast<bool>(client.shows(text, 0, std::chrono::seconds(1)));
    });
  }

  std::optional<HeadlessDesktop> desktop;
};

TEST_P(MenuCommands, ACheckOfAllGoesThereAndBackAndTheClipboardIsAsItWas) {
  GtkClient client(*desktop, GetParam(), {"entry", "entry"});
  client.focus();
  client.send("set kept");
  ASSERT_TRUE(client.shows("kept"));
  desktop->screen().press("Control_L+a");
  desktop->screen().press("Control_L+c");
  desktop->focusBy([&] { client.send("focus 1"); });
  client.send("set I recieve teh letter.");
  ASSERT_TRUE(client.shows("I recieve teh letter.", 1));
  desktop->focusBy([&] { client.send("focus 0"); });
  choose("Check All", [&] { client.send("focus 1"); });
  ASSERT_TRUE(windowShows("recieve")) << desktop->log();
  pressInWindow('a');
  EXPECT_TRUE(client.shows("I receive the letter.", 1)) << desktop->log();
  EXPECT_TRUE(pastes(client, "kept")) << client.text();
}

TEST_F(MenuCommands, WithNothingToCopyACommandIsGivenUp) {
  GtkClient client(*desktop, 3, {"entry", "entry"});
  client.focus();
  choose("Check All", [&] { client.send("focus 1"); });
  EXPECT_TRUE(eventually([&] { return logSays("given up: nothing was copied"); }));
  EXPECT_FALSE(std::filesystem::exists(meeting() / "window"));
}

INSTANTIATE_TEST_SUITE_P(GTK, MenuCommands, testing::Values(3, 4));

}  // namespace
}  // namespace quorvane::tests
