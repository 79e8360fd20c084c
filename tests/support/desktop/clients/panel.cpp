// The panel of the test desktop. It shows nothing: what it is asked to show it tells as lines on
// the socket that its argument names, and from there takes what somebody before a screen would do.
//
//   engine NAME | candidate INDEX | page-up | page-down | cursor-up | cursor-down | property KEY
//   STATE

#include <ibus.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>
#include <map>

#include "tests/support/desktop/clients/Commands.h"

namespace quorvane::tests {
namespace {

IBusBus* bus;
IBusPanelService* panel;
int connection;

void say(const std::string& line) {
  if (send(connection, (line + '\n').c_str(), line.size() + 1, MSG_NOSIGNAL) < 0) std::exit(1);
}

std::string shown(IBusText* text) { return escaped(ibus_text_get_text(text)); }

void sayText(const std::string& what, IBusText* text, gboolean visible) {
  say(what + (visible != FALSE ? " shown " : " hidden ") + shown(text));
}

/// "KEY TYPE STATE SENSITIVE LABEL", with a hyphen before it for each menu that it lies in.
void sayProperty(IBusProperty* property, int depth) {
  say("property " + std::string(static_cast<std::size_t>(depth), '-') +
      ibus_property_get_key(property) + ' ' +
      std::to_string(ibus_property_get_prop_type(property)) + ' ' +
      std::to_string(ibus_property_get_state(property)) + ' ' +
      std::to_string(ibus_property_get_sensitive(property)) + ' ' +
      shown(ibus_property_get_label(property)));
}

void sayProperties(IBusPropList* list, int depth) {
  for (guint i = 0; list != nullptr; ++i) {
    IBusProperty* const property = ibus_prop_list_get(list, i);
    if (property == nullptr) return;
    sayProperty(property, depth);
    sayProperties(ibus_property_get_sub_props(property), depth + 1);
  }
}

/// "candidates shown CURSOR PAGESIZE ORIENTATION", then each candidate behind a tab.
void onCandidates(IBusPanelService* /*panel*/, IBusLookupTable* table, gboolean visible) {
  std::string line = std::string("candidates ") + (visible != FALSE ? "shown " : "hidden ") +
                     std::to_string(ibus_lookup_table_get_cursor_pos(table)) + ' ' +
                     std::to_string(ibus_lookup_table_get_page_size(table)) + ' ' +
                     std::to_string(ibus_lookup_table_get_orientation(table));
  for (guint i = 0; i < ibus_lookup_table_get_number_of_candidates(table); ++i) {
    line += '\t' + shown(ibus_lookup_table_get_candidate(table, i));
  }
  say(line);
}

void onPreedit(IBusPanelService* /*panel*/, IBusText* text, guint /*cursor*/, gboolean visible) {
  sayText("preedit", text, visible);
}

void onAuxiliary(IBusPanelService* /*panel*/, IBusText* text, gboolean visible) {
  sayText("auxiliary", text, visible);
}

void onFocus(IBusPanelService* /*panel*/, const char* path) { say(std::string("focus ") + path); }

void onProperties(IBusPanelService* /*panel*/, IBusPropList* list) { sayProperties(list, 0); }

void listen() {
  const auto on = [](const char* signal, GCallback handler) {
    g_signal_connect(panel, signal, handler, nullptr);
  };
  on("focus-in", G_CALLBACK(onFocus));
  on("update-lookup-table", G_CALLBACK(onCandidates));
  on("update-auxiliary-text", G_CALLBACK(onAuxiliary));
  on("update-preedit-text", G_CALLBACK(onPreedit));
  on("register-properties", G_CALLBACK(onProperties));
}

void selectEngine(const std::string& name) {
  const bool done = ibus_bus_set_global_engine(bus, name.c_str()) != FALSE;
  say("engine " + (done ? name : "none"));
}

void activate(const std::string& rest) {
  const std::size_t blank = rest.rfind(' ');
  ibus_panel_service_property_activate(panel, rest.substr(0, blank).c_str(),
                                       static_cast<guint>(std::stoul(rest.substr(blank + 1))));
}

void obey(const std::string& word, const std::string& rest) {
  static const std::map<std::string, void (*)(IBusPanelService*)> kMoves{
      {"page-up", ibus_panel_service_page_up},
      {"page-down", ibus_panel_service_page_down},
      {"cursor-up", ibus_panel_service_cursor_up},
      {"cursor-down", ibus_panel_service_cursor_down}};
  if (word == "engine") selectEngine(rest);
  if (word == "property") activate(rest);
  if (word == "candidate") {
    ibus_panel_service_candidate_clicked(panel, static_cast<guint>(std::stoul(rest)), 1, 0);
  }
  if (const auto move = kMoves.find(word); move != kMoves.end()) move->second(panel);
}

void connectTo(const char* path) {
  sockaddr_un address{AF_UNIX, {}};
  std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
  connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    std::perror(path);
    std::exit(1);
  }
}

int run(const char* path) {
  ibus_init();
  bus = ibus_bus_new();
  panel = ibus_panel_service_new(ibus_bus_get_connection(bus));
  connectTo(path);
  listen();
  ibus_bus_request_name(bus, IBUS_SERVICE_PANEL, IBUS_BUS_NAME_FLAG_REPLACE_EXISTING);
  GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
  const Commands commands(connection, loop, obey);
  g_signal_connect_swapped(bus, "disconnected", G_CALLBACK(g_main_loop_quit), loop);
  g_main_loop_run(loop);
  return 0;
}

}  // namespace
}  // namespace quorvane::tests

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: desktop_panel SOCKET\n", stderr);
    return 2;
  }
  return quorvane::tests::run(arguments[1]);
}
