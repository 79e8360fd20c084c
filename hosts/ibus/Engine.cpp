#include "hosts/ibus/Engine.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "hosts/ibus/FrameworkText.h"
#include "hosts/ibus/OwnContext.h"

namespace quorvane::ibus {
namespace {

constexpr const char* kBusName = "org.freedesktop.IBus.Quorvane";
constexpr const char* kEngineName = "quorvane";
constexpr const char* kPathPrefix = "/org/freedesktop/IBus/Engine/Quorvane/";

}  // namespace

class Engine::OwnContext : public ibus::OwnContext {};

/// What GLib calls. `self` is the engine of this process.
struct Engine::Callbacks {
  static IBusEngine* create(IBusFactory* /*factory*/, const gchar* name, gpointer self) {
    return of(self).create(name);
  }
  static void disconnected(IBusBus* /*bus*/, gpointer self) {
    if (of(self).disconnected) of(self).disconnected();
  }
  static gboolean key(IBusEngine* engine, guint keyval, guint keycode, guint state, gpointer self) {
    Engine& owner = of(self);
    if (owner.contexts_ == nullptr) return FALSE;
    owner.engine_ = engine;
    return static_cast<gboolean>(owner.contexts_->processKey({keyval, keycode, state}));
  }
  static void focusIn(IBusEngine* engine, const gchar* path, const gchar* client, gpointer self) {
    Engine& owner = of(self);
    owner.engine_ = engine;
    if (owner.contexts_ != nullptr) owner.contexts_->focusIn(path, client);
    owner.askForText();
    if (owner.events_.focusCame) owner.events_.focusCame();
  }
  static void focusOut(IBusEngine* /*engine*/, const gchar* /*path*/, gpointer self) {
    if (of(self).contexts_ != nullptr) of(self).contexts_->focusOut();
  }
  static void enable(IBusEngine* engine, gpointer self) {
    of(self).engine_ = engine;
    of(self).askForText();
  }
  static void disable(IBusEngine* /*engine*/, gpointer self) {
    if (of(self).contexts_ != nullptr) of(self).contexts_->focusOut();
  }
  static void surroundingText(IBusEngine* /*engine*/, IBusText* text, guint caret, guint anchor,
                              gpointer self) {
    if (of(self).contexts_ == nullptr) return;
    of(self).contexts_->setSurroundingText(caretTextOf(ibus_text_get_text(text), caret, anchor));
  }
  static void contentType(IBusEngine* /*engine*/, guint purpose, guint hints, gpointer self) {
    if (of(self).contexts_ != nullptr) of(self).contexts_->setContentType(purpose, hints);
  }
  static void capabilities(IBusEngine* /*engine*/, guint capabilities, gpointer self) {
    if (of(self).contexts_ != nullptr) of(self).contexts_->setCapabilities(capabilities);
  }
  static void cursorLocation(IBusEngine* /*engine*/, gint x, gint y, gint width, gint height,
                             gpointer self) {
    if (of(self).contexts_ == nullptr) return;
    of(self).contexts_->setLine({static_cast<double>(x), -static_cast<double>(y + height),
                                 static_cast<double>(width), static_cast<double>(height)});
  }
  static void candidateClicked(IBusEngine* /*engine*/, guint index, guint /*button*/,
                               guint /*state*/, gpointer self) {
    if (of(self).events_.candidateClicked) of(self).events_.candidateClicked(index);
  }
  static void propertyActivate(IBusEngine* /*engine*/, const gchar* name, guint /*state*/,
                               gpointer self) {
    if (of(self).events_.propertyActivated) of(self).events_.propertyActivated(name);
  }
  template <bool forward>
  static void moveCursor(IBusEngine* /*engine*/, gpointer self) {
    if (of(self).events_.cursorMoved) of(self).events_.cursorMoved(forward);
  }
  template <bool forward>
  static void turnPage(IBusEngine* /*engine*/, gpointer self) {
    if (of(self).events_.pageTurned) of(self).events_.pageTurned(forward);
  }

 private:
  static Engine& of(gpointer self) { return *static_cast<Engine*>(self); }
};

Engine::Engine() : context_(std::make_unique<OwnContext>()) {
  const ibus::OwnContext::Making here(*context_);
  ibus_init();
  bus_.reset(IBUS_BUS(g_object_ref_sink(ibus_bus_new())));
  if (!ibus_bus_is_connected(bus_.get())) {
    throw std::runtime_error("no IBus daemon runs here; start it with `ibus-daemon -drx`");
  }
  g_signal_connect(bus_.get(), "disconnected", G_CALLBACK(Callbacks::disconnected), this);
  factory_.reset(
      IBUS_FACTORY(g_object_ref_sink(ibus_factory_new(ibus_bus_get_connection(bus_.get())))));
  g_signal_connect(factory_.get(), "create-engine", G_CALLBACK(Callbacks::create), this);
}

Engine::~Engine() = default;

void Engine::serve(InputContexts& contexts, PanelEvents events) {
  const ibus::OwnContext::Making here(*context_);
  contexts_ = &contexts;
  events_ = std::move(events);
  constexpr guint32 kPrimaryOwner = 1;
  if (ibus_bus_request_name(bus_.get(), kBusName, IBUS_BUS_NAME_FLAG_DO_NOT_QUEUE) !=
      kPrimaryOwner) {
    throw std::runtime_error("another process is IBus's engine `quorvane` already");
  }
}

void Engine::comeBack() {
  IBusEngineDesc* const chosen = ibus_bus_get_global_engine(bus_.get());
  const bool ours =
      chosen == nullptr || ibus_engine_desc_get_name(chosen) == std::string(kEngineName);
  if (chosen != nullptr) g_object_unref(chosen);
  constexpr gint kUsualTimeout = -1;
  if (ours) {
    ibus_bus_set_global_engine_async(bus_.get(), kEngineName, kUsualTimeout, nullptr, nullptr,
                                     nullptr);
  }
}

IBusEngine* Engine::create(const char* name) {
  const ibus::OwnContext::Making here(*context_);
  const std::string path = kPathPrefix + std::to_string(++created_);
  auto* const engine = IBUS_ENGINE(
      g_object_new(IBUS_TYPE_ENGINE, "engine-name", name, "object-path", path.c_str(), "connection",
                   ibus_bus_get_connection(bus_.get()), "has-focus-id", TRUE, nullptr));
  const auto on = [&](const char* signal, GCallback callback) {
    g_signal_connect(engine, signal, callback, this);
  };
  on("process-key-event", G_CALLBACK(Callbacks::key));
  on("focus-in-id", G_CALLBACK(Callbacks::focusIn));
  on("focus-out-id", G_CALLBACK(Callbacks::focusOut));
  on("enable", G_CALLBACK(Callbacks::enable));
  on("disable", G_CALLBACK(Callbacks::disable));
  on("set-surrounding-text", G_CALLBACK(Callbacks::surroundingText));
  on("set-content-type", G_CALLBACK(Callbacks::contentType));
  on("set-capabilities", G_CALLBACK(Callbacks::capabilities));
  on("set-cursor-location", G_CALLBACK(Callbacks::cursorLocation));
  on("candidate-clicked", G_CALLBACK(Callbacks::candidateClicked));
  on("property-activate", G_CALLBACK(Callbacks::propertyActivate));
  on("cursor-up", G_CALLBACK(Callbacks::moveCursor<false>));
  on("cursor-down", G_CALLBACK(Callbacks::moveCursor<true>));
  on("page-up", G_CALLBACK(Callbacks::turnPage<false>));
  on("page-down", G_CALLBACK(Callbacks::turnPage<true>));
  return engine;
}

/// Clients tell their text only where somebody has asked for it.
void Engine::askForText() {
  if (engine_ != nullptr) ibus_engine_get_surrounding_text(engine_, nullptr, nullptr, nullptr);
}

void Engine::commit(std::u16string_view text) {
  if (engine_ != nullptr) ibus_engine_commit_text(engine_, newText(text));
}

void Engine::deleteBefore(std::uint32_t codePoints) {
  if (engine_ == nullptr) return;
  ibus_engine_delete_surrounding_text(engine_, -static_cast<gint>(codePoints), codePoints);
}

/// The client keeps what is shown where the focus leaves it. What is taken away it would keep, too.
void Engine::showPreedit(std::u16string_view text, std::uint32_t caret) {
  if (engine_ == nullptr) return;
  IBusText* const shown = newText(text);
  ibus_text_append_attribute(shown, IBUS_ATTR_TYPE_UNDERLINE, IBUS_ATTR_UNDERLINE_SINGLE, 0,
                             static_cast<gint>(ibus_text_get_length(shown)));
  ibus_engine_update_preedit_text_with_mode(
      engine_, shown, caret, static_cast<gboolean>(!text.empty()), IBUS_ENGINE_PREEDIT_COMMIT);
}

void Engine::forward(const Key& key) {
  if (engine_ != nullptr) {
    ibus_engine_forward_key_event(engine_, key.keyval, key.keycode, key.state);
  }
}

void Engine::passOn(const Key& key) {
  Key released = key;
  released.state |= kReleaseState;
  forward(key);
  forward(released);
}

void Engine::showCandidates(IBusLookupTable* table) {
  if (engine_ == nullptr) return;
  if (table == nullptr) return ibus_engine_hide_lookup_table(engine_);
  ibus_engine_update_lookup_table(engine_, table, TRUE);
}

void Engine::showAnnotation(std::u16string_view text) {
  if (engine_ == nullptr) return;
  if (text.empty()) return ibus_engine_hide_auxiliary_text(engine_);
  ibus_engine_update_auxiliary_text(engine_, newText(text), TRUE);
}

void Engine::showProperties(IBusPropList* properties) {
  if (engine_ != nullptr) ibus_engine_register_properties(engine_, properties);
}

}  // namespace quorvane::ibus
