#include "hosts/desktop/Notification.h"

#include <gio/gio.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

namespace quorvane::desktop {
namespace {

constexpr const char* kService = "org.freedesktop.Notifications";
constexpr const char* kObject = "/org/freedesktop/Notifications";
constexpr int kCallTimeout = 5000;  // milliseconds

struct Unref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using Owned = std::unique_ptr<Object, Unref>;

struct UnrefValue {
  void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Value = std::unique_ptr<GVariant, UnrefValue>;

/// No bus is started for the sake of it. Empty: there is none.
std::string sessionBus() {
  const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
  if (address != nullptr && *address != '\0') return address;
  const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
  if (runtime == nullptr || *runtime != '/') return {};
  const auto socket = std::filesystem::path(runtime) / "bus";
  std::error_code error;
  return std::filesystem::exists(socket, error) ? "unix:path=" + socket.string() : std::string();
}

std::string escaped(const std::string& text) {
  const std::unique_ptr<char, decltype(&g_free)> markup(g_markup_escape_text(text.c_str(), -1),
                                                        g_free);
  return markup.get();
}

/// An action's key is its button's place.
GVariant* parametersOf(const NSAlert& alert) {
  GVariantBuilder actions;
  g_variant_builder_init(&actions, G_VARIANT_TYPE("as"));
  for (std::size_t i = 0; i < alert.buttons.size(); ++i) {
    g_variant_builder_add(&actions, "s", std::to_string(i).c_str());
    g_variant_builder_add(&actions, "s", alert.buttons[i].c_str());
  }
  GVariantBuilder hints;
  g_variant_builder_init(&hints, G_VARIANT_TYPE("a{sv}"));
  g_variant_builder_add(&hints, "{sv}", "urgency", g_variant_new_byte(2));
  return g_variant_new("(susssasa{sv}i)", "Quorvane", 0U, "", alert.messageText.c_str(),
                       escaped(alert.informativeText).c_str(), &actions, &hints, 0);
}

}  // namespace

struct Notification::State : std::enable_shared_from_this<State> {
  NSAlert alert;
  Owned<GCancellable> cancellable{g_cancellable_new()};
  Owned<GDBusConnection> bus;
  guint subscription = 0;
  std::uint32_t id = 0;  ///< 0: it isn't shown yet
  bool open = true;
  bool closing = false;
  bool gone = false;
  std::optional<int> answer;

  /// A reference for a call that is under way; `taken` takes it back.
  gpointer lent() { return new std::shared_ptr<State>(shared_from_this()); }
  static std::shared_ptr<State> taken(gpointer data) {
    const std::unique_ptr<std::shared_ptr<State>> reference(
        static_cast<std::shared_ptr<State>*>(data));
    return *reference;
  }
  static void drop(gpointer data) { taken(data); }

  void connected(GDBusConnection* connection);
  void shown(GVariant* reply);
  void told(const std::string& signal, GVariant* parameters);
  void close();

  static void onConnected(GObject* source, GAsyncResult* result, gpointer data);
  static void onShown(GObject* source, GAsyncResult* result, gpointer data);
  static void onClosed(GObject* source, GAsyncResult* result, gpointer data);
  static void onSignal(GDBusConnection* bus, const char* sender, const char* object,
                       const char* interface, const char* signal, GVariant* parameters,
                       gpointer data);
};

void Notification::State::onConnected(GObject* /*source*/, GAsyncResult* result, gpointer data) {
  taken(data)->connected(g_dbus_connection_new_for_address_finish(result, nullptr));
}

void Notification::State::onShown(GObject* source, GAsyncResult* result, gpointer data) {
  const Value reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
  taken(data)->shown(reply.get());
}

/// The connection lives until this has come.
void Notification::State::onClosed(GObject* source, GAsyncResult* result, gpointer data) {
  const Value reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
  taken(data)->gone = true;
}

void Notification::State::onSignal(GDBusConnection* /*bus*/, const char* /*sender*/,
                                   const char* /*object*/, const char* /*interface*/,
                                   const char* signal, GVariant* parameters, gpointer data) {
  (*static_cast<std::shared_ptr<State>*>(data))->told(signal, parameters);
}

void Notification::State::connected(GDBusConnection* connection) {
  bus.reset(connection);
  open = open && bus != nullptr;
  if (!open) return;
  subscription =
      g_dbus_connection_signal_subscribe(bus.get(), kService, kService, nullptr, kObject, nullptr,
                                         G_DBUS_SIGNAL_FLAGS_NONE, onSignal, lent(), drop);
  g_dbus_connection_call(bus.get(), kService, kObject, kService, "Notify", parametersOf(alert),
                         G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, kCallTimeout,
                         cancellable.get(), onShown, lent());
}

void Notification::State::shown(GVariant* reply) {
  if (reply == nullptr) {
    open = false;
  } else {
    g_variant_get(reply, "(u)", &id);
  }
}

void Notification::State::told(const std::string& signal, GVariant* parameters) {
  const bool isAction = g_variant_is_of_type(parameters, G_VARIANT_TYPE("(us)"));
  if (!open || (!isAction && !g_variant_is_of_type(parameters, G_VARIANT_TYPE("(uu)")))) return;
  const Value first(g_variant_get_child_value(parameters, 0));
  if (id == 0 || g_variant_get_uint32(first.get()) != id) return;
  if (signal == "NotificationClosed") open = false;
  if (signal != "ActionInvoked" || !isAction) return;
  const char* key = nullptr;
  g_variant_get(parameters, "(u&s)", nullptr, &key);
  for (std::size_t i = 0; i < alert.buttons.size(); ++i) {
    if (std::to_string(i) == key) answer = static_cast<int>(i);
  }
  open = open && !answer;
}

void Notification::State::close() {
  if (std::exchange(closing, true)) return;
  open = false;
  gone = bus == nullptr || id == 0;
  g_cancellable_cancel(cancellable.get());
  if (bus == nullptr) return;
  if (id != 0) {
    g_dbus_connection_call(bus.get(), kService, kObject, kService, "CloseNotification",
                           g_variant_new("(u)", id), nullptr, G_DBUS_CALL_FLAGS_NONE, kCallTimeout,
                           nullptr, onClosed, lent());
  }
  g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
}

std::unique_ptr<Notification> Notification::show(const NSAlert& alert) {
  const std::string address = sessionBus();
  if (address.empty()) return nullptr;
  auto state = std::make_shared<State>();
  state->alert = alert;
  g_dbus_connection_new_for_address(
      address.c_str(),
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
      nullptr, state->cancellable.get(), State::onConnected, state->lent());
  return std::unique_ptr<Notification>(new Notification(std::move(state)));
}

void Notification::close() { state_->close(); }

bool Notification::isGone() const { return state_->gone; }

bool Notification::isOpen() const { return state_->open; }

std::optional<int> Notification::answer() const { return state_->answer; }

}  // namespace quorvane::desktop
