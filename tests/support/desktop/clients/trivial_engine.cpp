// The least engine: it passes each key, and with `--replace` makes "the " of `teh` and a space. The
// test desktop is tried with it, and what another engine takes is compared with what this one
// takes.

#include <ibus.h>

#include <cstring>
#include <string>

namespace {

bool replaces;
std::string typed;  // since the engine was last told of another place

bool isTeh() { return typed.ends_with("teh"); }

gboolean onKey(IBusEngine* engine, guint keyval, guint /*keycode*/, guint state) {
  if ((state & IBUS_RELEASE_MASK) != 0 || keyval >= 0x100) return FALSE;
  if (replaces && keyval == ' ' && isTeh()) {
    ibus_engine_delete_surrounding_text(engine, -3, 3);
    ibus_engine_commit_text(engine, ibus_text_new_from_string("the "));
    typed.clear();
    return TRUE;
  }
  typed += static_cast<char>(keyval);
  return FALSE;
}

void onFocus(IBusEngine* engine) {
  typed.clear();
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
