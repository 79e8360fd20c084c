// Commands of the Input Menu, from the panel to the text of real programs and back.

#include "hosts/desktop/MessageFraming.h"
#include "hosts/desktop/PacketSocket.h"
#include "tests/ibus/ServedDesktop.h"

namespace quorvane::tests {
namespace {

class MenuCommands : public ServedDesktop, public testing::WithParamInterface<int> {
 protected:
  /// By the menu as the panel shows it from the next focus on.
  template <class Action>
  void choose(const std::string& item, Action focus) {
    Lines& panel = desktop().panel();
    desktop().focusBy(focus);
    std::string line;
    do line = panel.await("property ");
    while (!line.ends_with(" 1 " + item));
    panel.send("property " + line.substr(line.find('m'), line.find(' ') - line.find('m')) + " 0");
  }
  void pressInWindow(char key) {
    const auto port =
        desktop::connectTo(runtimeFolder() / "Q7T2M4K9W1.com.tallowmere.Quorvane.window");
    EXPECT_EQ(desktop::sendPacket(port.get(), desktop::encodeRequestHeader(key, false), {}),
              desktop::Transfer::Done);
  }
  static bool isSoonIn(const std::filesystem::path& file, const std::string& text) {
    return eventually([&] { return contentOf(file).find(text) != std::string::npos; });
  }

  /// Into the first field, once the clipboard has it.
  bool pastes(GtkClient& client, const std::string& text) {
    desktop().focusBy([&] { client.send("focus 0"); });
    return eventually([&] {
      client.send("set ");
      screen().press("Control_L+v");
      return static_cast<bool>(client.shows(text, 0, std::chrono::seconds(1)));
    });
  }
};

TEST_P(MenuCommands, ACheckOfAllGoesThereAndBackAndTheClipboardIsAsItWas) {
  start();
  GtkClient client(desktop(), GetParam(), {"entry", "entry"});
  client.focus();
  client.send("set kept");
  ASSERT_TRUE(client.shows("kept"));
  screen().press("Control_L+a");
  screen().press("Control_L+c");
  desktop().focusBy([&] { client.send("focus 1"); });
  client.send("set I recieve teh letter.");
  ASSERT_TRUE(client.shows("I recieve teh letter.", 1));
  desktop().focusBy([&] { client.send("focus 0"); });
  choose("Check All", [&] { client.send("focus 1"); });
  ASSERT_TRUE(isSoonIn(runtimeFolder() / "window", "recieve")) << desktop().log();
  pressInWindow('a');
  EXPECT_TRUE(client.shows("I receive the letter.", 1)) << desktop().log();
  EXPECT_TRUE(pastes(client, "kept")) << client.text();
}

TEST_F(MenuCommands, WithNothingToCopyACommandIsGivenUp) {
  start();
  GtkClient client(desktop(), 3, {"entry", "entry"});
  client.focus();
  choose("Check All", [&] { client.send("focus 1"); });
  EXPECT_TRUE(isSoonIn(desktop().file("log"), "given up: nothing was copied"));
  EXPECT_FALSE(std::filesystem::exists(runtimeFolder() / "window"));
}

INSTANTIATE_TEST_SUITE_P(GTK, MenuCommands, testing::Values(3, 4));

}  // namespace
}  // namespace quorvane::tests
