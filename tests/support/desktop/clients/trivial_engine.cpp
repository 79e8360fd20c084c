// The least engine: it passes each key, and with `--replace` makes "the " of `teh` and a space. The
// test desktop is tried with it, and what another engine takes is compared with what this one
// takes.

#include <ibus.h>

#include <cstring>
#include <string>

namespace {

bool replaces;

/// Whether the client says, as it does with each key, that `teh` stands before the caret.
bool standsTeh(IBusEngine* engine) {
  if ((engine->client_capabilities & IBUS_CAP_SURROUNDING_TEXT) == 0) return false;
  IBusText* text = nullptr;
  guint caret = 0;
  guint anchor = 0;
  ibus_engine_get_surrounding_text(engine, &text, &caret, &anchor);
  const auto length = static_cast<guint>(g_utf8_strlen(text->text, -1));
  const char* const end = g_utf8_offset_to_pointer(text->text, caret < length ? caret : length);
  const bool result =
      std::string_view(text->text, static_cast<std::size_t>(end - text->text)).ends_with("teh");
  g_object_unref(text);
  return result;
}

gboolean onKey(IBusEngine* engine, guint keyval, guint /*keycode*/, guint state) {
  if ((state & IBUS_RELEASE_MASK) != 0 || keyval >= 0x100) return FALSE;
  if (replaces && keyval == ' ' && standsTeh(engine)) {
    ibus_engine_delete_surrounding_text(engine, -3, 3);
    ibus_engine_commit_text(engine, ibus_text_new_from_string("the "));
    return TRUE;
  }
  return FALSE;
}

void onFocus(IBusEngine* engine) {
  ibus_engine_get_surrounding_text(engine, nullptr, nullptr, nullptr);
}

IBusEngine* create(IBusFactory* factory, const char* name) {
  static int number = 0;
  const std::string path = "/org/freedesktop/IBus/Engine/" + std::to_string(++number);
  IBusEngine* const engine =
      ibus_engine_new(name, path.c_str(), ibus_service_get_connection(IBUS_SERVICE(factory)));
  g_signal_connect(engine, "process-key-event", G_CALLBACK(onKey), nullptr);
  g_signal_connect(engine, "focus-in", G_CALLBACK(onFocus), nullptr);
  return engine;
}

}  // namespace

int main(int count, char** arguments) {
  replaces = count > 1 && std::strcmp(arguments[1], "--replace") == 0;
  ibus_init();
  IBusBus* const bus = ibus_bus_new();
  g_signal_connect(bus, "disconnected", G_CALLBACK(ibus_quit), nullptr);
  IBusFactory* const factory = ibus_factory_new(ibus_bus_get_connection(bus));
  g_signal_connect(factory, "create-engine", G_CALLBACK(create), nullptr);
  ibus_bus_request_name(bus, "org.freedesktop.IBus.Quorvane", 0);
  ibus_main();
}
