// Alerts: who answers them, and what becomes of the answer.

#include <gio/gio.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>

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
    GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(
        "<node><interface name='org.freedesktop.Notifications'><method name='Notify'>"
        "<arg type='s' direction='in'/><arg type='u' direction='in'/><arg type='s' direction='in'/>"
        "<arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='as' "
        "direction='in'/><arg type='a{sv}' direction='in'/><arg type='i' direction='in'/>"
        "<arg type='u' direction='out'/></method><method name='CloseNotification'>"
        "<arg type='u' direction='in'/></method></interface></node>",
        nullptr);
    static const GDBusInterfaceVTable table{onCall, nullptr, nullptr, {}};
    object_ =
        g_dbus_connection_register_object(connection_, "/org/freedesktop/Notifications",
                                          node->interfaces[0], &table, this, nullptr, nullptr);
    g_dbus_node_info_unref(node);
    name_ = g_bus_own_name_on_connection(connection_, "org.freedesktop.Notifications",
                                         G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr,
                                         nullptr);
  }
  ~Bus() {
    g_bus_unown_name(name_);
    g_dbus_connection_unregister_object(connection_, object_);  // a call may wait for it
    g_object_unref(connection_);
    g_test_dbus_stop(bus_);
    g_object_unref(bus_);
  }
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  bool closed = false;

 private:
  static void onCall(GDBusConnection* connection, const char* /*sender*/, const char* path,
                     const char* interface, const char* method, GVariant* /*parameters*/,
                     GDBusMethodInvocation* invocation, gpointer data) {
    auto& bus = *static_cast<Bus*>(data);
    const bool shows = std::string_view(method) == "Notify";
    bus.closed = !shows;
    g_dbus_method_invocation_return_value(invocation, shows ? g_variant_new("(u)", 7U) : nullptr);
    if (!shows || bus.key_.empty()) return;
    for (const guint id : {6U, 7U}) {  // somebody else's comes first
      const char* const key = id == 7 ? bus.key_.c_str() : "0";
      g_dbus_connection_emit_signal(connection, nullptr, path, interface, "ActionInvoked",
                                    g_variant_new("(us)", id, key), nullptr);
    }
  }

  std::string key_;
  GTestDBus* bus_ = g_test_dbus_new(G_TEST_DBUS_NONE);
  GDBusConnection* connection_ = nullptr;
  guint object_ = 0;
  guint name_ = 0;
};

const NSAlert kAlert{.messageText = "Needs <access>",
                     .informativeText = "a & b",
                     .buttons = {"Change", "Later", "Cancel"}};

TEST(DesktopAlerts, AreAnsweredByWhoeverShowsNotificationsOrNotAtAll) {
  tests::DesktopStage stage;
  Alerts& alerts = stage.host().alerts();
  int turns = 0;
  const auto keys = stage.host().runLoop().addTimer(std::chrono::milliseconds(5), [&turns] {
    ++turns;
    return true;
  });
  {
    Bus bus("1");
    EXPECT_EQ(alerts.runModal(kAlert), NSAlertFirstButtonReturn + 1);
    EXPECT_TRUE(stage.eventually([&bus] { return bus.closed; }));
  }
  {
    const Bus bus("");
    alerts.patience = std::chrono::milliseconds(100);
    turns = 0;
    EXPECT_EQ(alerts.runModal(kAlert), NSAlertFirstButtonReturn + 2) << "nobody answers in time";
    EXPECT_GT(turns, 5) << "the loop turned meanwhile";
    EXPECT_TRUE(bus.closed) << "and it is off the screen";
  }
  ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such", 1);
  EXPECT_EQ(alerts.runModal(kAlert), NSAlertFirstButtonReturn + 2);
  ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

TEST(DesktopConsent, IsTheUsersFileWhichAnAnswerWrites) {
  tests::DesktopStage stage;
  const Platform platform = stage.platform();
  const std::string identifier = "com.tallowmere.inputmethod.Quorvane";  // this process's
  const std::vector<std::uint8_t> bytes(identifier.begin(), identifier.end());
  const auto status = [&](bool ask) {
    return platform.appleEvents.AEDeterminePermissionToAutomateTarget(
        {typeApplicationBundleID, bytes}, typeWildCard, typeWildCard, ask);
  };
  EXPECT_EQ(status(false), errAEEventWouldRequireUserConsent);
  {
    const Bus bus("2");
    EXPECT_EQ(status(true), errAEEventWouldRequireUserConsent) << "cancelled";
  }
  for (const auto& [key, expected] : {std::pair{"1", errAEEventNotPermitted}, {"0", noErr}}) {
    std::filesystem::remove(stage.configuration().configDirectory / "consent");
    const Bus bus(key);
    EXPECT_EQ(status(true), expected);
    EXPECT_EQ(status(false), expected);
  }
  std::ofstream(stage.configuration().configDirectory / "consent") << "[automation\nx";
  EXPECT_EQ(status(false), errAEEventWouldRequireUserConsent) << "a broken file is no answer";
  std::filesystem::remove(stage.configuration().configDirectory / "consent");
  ASSERT_EQ(::mkfifo((stage.configuration().configDirectory / "consent").c_str(), 0600), 0);
  EXPECT_EQ(status(false), errAEEventWouldRequireUserConsent) << "nor is one that never comes";
  const std::vector<std::uint8_t> unknown{'x'};
  EXPECT_EQ(platform.appleEvents.AEDeterminePermissionToAutomateTarget(
                {typeApplicationBundleID, unknown}, typeWildCard, typeWildCard, true),
            procNotFound);
}

}  // namespace
}  // namespace quorvane::desktop
