// Alerts: who answers them, and what becomes of the answer.

#include <gio/gio.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <atomic>
#include <cstdlib>

#include "hosts/desktop/AppleEvents.h"
#include "tests/support/DesktopStage.h"

namespace quorvane::desktop {
namespace {

/// A session bus with somebody on it who presses the button with this key; empty: never.
class Bus {
 public:
  explicit Bus(std::string key) : key_(std::move(key)) {
    g_test_dbus_up(bus_);
    connection_ = g_dbus_connection_new_for_address_sync(
        g_test_dbus_get_bus_address(bus_),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    g_dbus_connection_add_filter(connection_, onMessage, this, nullptr);
    g_variant_unref(g_dbus_connection_call_sync(
        connection_, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", "org.freedesktop.Notifications", 0U), nullptr, G_DBUS_CALL_FLAGS_NONE,
        -1, nullptr, nullptr));
  }
  ~Bus() {
    g_dbus_connection_close_sync(connection_, nullptr, nullptr);  // after it nobody calls
    g_object_unref(connection_);
    g_test_dbus_stop(bus_);
    g_object_unref(bus_);
  }
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  std::atomic<bool> closed = false;

 private:
  // On the connection's own thread.
  static GDBusMessage* onMessage(GDBusConnection* connection, GDBusMessage* message,
                                 gboolean incoming, gpointer data) {
    const bool called = g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL;
    if (incoming == FALSE || !called) return message;
    auto& bus = *static_cast<Bus*>(data);
    const bool shows = std::string_view(g_dbus_message_get_member(message)) == "Notify";
    bus.closed = !shows;
    GDBusMessage* const reply = g_dbus_message_new_method_reply(message);
    if (shows) g_dbus_message_set_body(reply, g_variant_new("(u)", 7U));
    g_dbus_connection_send_message(connection, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                   nullptr);
    g_object_unref(reply);
    for (const guint id : {6U, 7U}) {  // somebody else's comes first
      if (!shows || bus.key_.empty()) break;
      g_dbus_connection_emit_signal(connection, nullptr, g_dbus_message_get_path(message),
                                    g_dbus_message_get_interface(message), "ActionInvoked",
                                    g_variant_new("(us)", id, id == 7 ? bus.key_.c_str() : "0"),
                                    nullptr);
    }
    g_object_unref(message);
    return nullptr;
  }

  std::string key_;
  GTestDBus* bus_ = g_test_dbus_new(G_TEST_DBUS_NONE);
  GDBusConnection* connection_ = nullptr;
};

TEST(DesktopConsent, IsTheUsersFileWhichTheAnswerToAnAlertWrites) {
  tests::DesktopStage stage;
  const Platform platform = stage.platform();
  const std::string identifier = "com.tallowmere.inputmethod.Quorvane";  // this process's
  const std::vector<std::uint8_t> bytes(identifier.begin(), identifier.end());
  const auto status = [&](bool ask) {
    return platform.appleEvents.AEDeterminePermissionToAutomateTarget(
        {typeApplicationBundleID, bytes}, typeWildCard, typeWildCard, ask);
  };
  const std::filesystem::path file = stage.configuration().configDirectory / "consent";
  const OSStatus unknown = errAEEventWouldRequireUserConsent;
  EXPECT_EQ(status(false), unknown);
  {
    const Bus bus("2");
    EXPECT_EQ(status(true), unknown) << "cancelled";
  }
  for (const auto& [key, expected] : {std::pair{"1", errAEEventNotPermitted}, {"0", noErr}}) {
    std::filesystem::remove(file);
    const Bus bus(key);
    EXPECT_EQ(status(true), expected);
    EXPECT_EQ(status(false), expected);
  }
  std::filesystem::remove(file);
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  EXPECT_EQ(status(false), unknown) << "a file that never ends is no answer";
  {
    const Bus bus("");
    int turns = 0;
    const auto keys = stage.host().runLoop().addTimer(std::chrono::milliseconds(5),
                                                      [&turns] { return ++turns > 0; });
    stage.host().alerts().patience = std::chrono::milliseconds(100);
    EXPECT_EQ(status(true), unknown) << "nobody answers in time";
    EXPECT_GT(turns, 5) << "the loop turned meanwhile";
    EXPECT_TRUE(stage.eventually([&bus] { return bus.closed.load(); })) << "off the screen";
  }
  ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such", 1);
  EXPECT_EQ(status(true), unknown);
  ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
  const std::vector<std::uint8_t> nobody{'x'};
  EXPECT_EQ(platform.appleEvents.AEDeterminePermissionToAutomateTarget(
                {typeApplicationBundleID, nobody}, typeWildCard, typeWildCard, true),
            procNotFound);
}

}  // namespace
}  // namespace quorvane::desktop
