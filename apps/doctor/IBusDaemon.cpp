#include "apps/doctor/IBusDaemon.h"

#include <gio/gio.h>

#include <charconv>
#include <memory>
#include <optional>
#include <utility>

#include "apps/FamilyFolders.h"
#include "hosts/desktop/ProcessLiveness.h"

namespace quorvane {
namespace {

using doctor::Daemon;

constexpr int kPatience = 2000;  // milliseconds
constexpr const char* kIBus = "org.freedesktop.IBus";
constexpr const char* kObject = "/org/freedesktop/IBus";

struct Release {
  void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
  void operator()(GVariant* value) const { g_variant_unref(value); }
  void operator()(GCancellable* cancellable) const { g_object_unref(cancellable); }
  void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
};
using Connection = std::unique_ptr<GDBusConnection, Release>;
using Value = std::unique_ptr<GVariant, Release>;

std::string lineOf(const std::string& content, std::string_view start) {
  const std::size_t found = content.find("\n" + std::string(start));
  if (found == std::string::npos) return {};
  const std::size_t value = found + 1 + start.size();
  return content.substr(value, content.find('\n', value) - value);
}

std::optional<Daemon> daemonOf(const std::filesystem::path& file) {
  const std::string content = contentOf(file);
  const std::string pid = lineOf(content, "IBUS_DAEMON_PID=");
  Daemon daemon;
  daemon.address = lineOf(content, "IBUS_ADDRESS=");
  const auto read = std::from_chars(pid.data(), pid.data() + pid.size(), daemon.process);
  const bool isRunning = read.ec == std::errc() && daemon.process > 0 &&
                         desktop::beganBefore(daemon.process, file) &&
                         desktop::isRunning(daemon.process);
  return isRunning ? std::optional(daemon) : std::nullopt;
}

/// The wait for a connection. A daemon that is stopped doesn't even refuse one.
struct Connecting {
  std::unique_ptr<GMainLoop, Release> loop{g_main_loop_new(nullptr, FALSE)};
  std::unique_ptr<GCancellable, Release> cancellable{g_cancellable_new()};
  Connection connection;

  static void finish(GObject* /*source*/, GAsyncResult* result, gpointer data) {
    auto& wait = *static_cast<Connecting*>(data);
    wait.connection.reset(g_dbus_connection_new_for_address_finish(result, nullptr));
    g_main_loop_quit(wait.loop.get());
  }
  static gboolean giveUp(gpointer data) {
    g_cancellable_cancel(static_cast<Connecting*>(data)->cancellable.get());
    return G_SOURCE_CONTINUE;
  }
};

Connection connectionTo(const std::string& address) {
  Connecting wait;
  const auto flags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  g_dbus_connection_new_for_address(address.c_str(), flags, nullptr, wait.cancellable.get(),
                                    Connecting::finish, &wait);
  const guint timer = g_timeout_add(kPatience, Connecting::giveUp, &wait);
  g_main_loop_run(wait.loop.get());
  g_source_remove(timer);
  return std::move(wait.connection);
}

Value answer(GDBusConnection* connection, const char* interface, const char* method,
             GVariant* parameters, const char* type) {
  return Value(g_dbus_connection_call_sync(
      connection, kIBus, kObject, interface, method, parameters, G_VARIANT_TYPE(type),
      G_DBUS_CALL_FLAGS_NO_AUTO_START, kPatience, nullptr, nullptr));
}

bool knowsEngine(GDBusConnection* connection) {
  const char* const names[] = {"quorvane", nullptr};
  const Value found =
      answer(connection, kIBus, "GetEnginesByNames", g_variant_new("(^as)", names), "(av)");
  if (found == nullptr) return false;
  const Value engines(g_variant_get_child_value(found.get(), 0));
  return g_variant_n_children(engines.get()) != 0;
}

/// The third member of the engine's description.
std::string nameIn(GVariant* description) {
  if (!g_variant_is_container(description) || g_variant_n_children(description) < 3) return {};
  const Value name(g_variant_get_child_value(description, 2));
  if (!g_variant_is_of_type(name.get(), G_VARIANT_TYPE_STRING)) return {};
  return g_variant_get_string(name.get(), nullptr);
}

/// The description lies in a variant in a variant.
std::string selectedEngine(GDBusConnection* connection) {
  Value value = answer(connection, "org.freedesktop.DBus.Properties", "Get",
                       g_variant_new("(ss)", kIBus, "GlobalEngine"), "(v)");
  if (value == nullptr) return {};
  value.reset(g_variant_get_child_value(value.get(), 0));
  while (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_VARIANT)) {
    value.reset(g_variant_get_variant(value.get()));
  }
  return nameIn(value.get());
}

void ask(Daemon& daemon) {
  const Connection connection = connectionTo(daemon.address);
  if (connection == nullptr) return;
  daemon.answers = true;
  daemon.knowsEngine = knowsEngine(connection.get());
  daemon.engine = selectedEngine(connection.get());
}

}  // namespace

Daemon ibusDaemon(const std::filesystem::path& configuration) {
  for (const auto& file : entriesOf(configuration / "ibus" / "bus")) {
    if (auto daemon = daemonOf(file)) {
      ask(*daemon);
      return *daemon;
    }
  }
  return {};
}

}  // namespace quorvane
