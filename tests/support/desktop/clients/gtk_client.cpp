// A window with a field for each argument: entry, view, hidden, purpose (a visible entry for a
// password) and, with GTK 4, password. Each change of a field is told as "text NUMBER ESCAPED".
//
//   focus NUMBER | set ESCAPED (into the focused field) | copy TEXT | quit

#include <gtk/gtk.h>

#include <vector>

#include "tests/support/desktop/clients/Commands.h"

namespace quorvane::tests {
namespace {

std::vector<GtkWidget*> fields;
GtkWidget* window;

GtkTextBuffer* bufferOf(GtkWidget* field) {
  return GTK_IS_TEXT_VIEW(field) ? gtk_text_view_get_buffer(GTK_TEXT_VIEW(field)) : nullptr;
}

std::string textOf(GtkWidget* field) {
  GtkTextIter from;
  GtkTextIter to;
  GtkTextBuffer* const buffer = bufferOf(field);
  if (buffer != nullptr) gtk_text_buffer_get_bounds(buffer, &from, &to);
  gchar* const text = buffer != nullptr ? gtk_text_buffer_get_text(buffer, &from, &to, TRUE)
                                        : gtk_editable_get_chars(GTK_EDITABLE(field), 0, -1);
  const std::string result = escaped(text);
  g_free(text);
  return result;
}

void tell(std::size_t number) {
  std::printf("text %zu %s\n", number, textOf(fields[number]).c_str());
  std::fflush(stdout);
}

void onChange(GObject* /*changed*/, gpointer number) { tell(GPOINTER_TO_SIZE(number)); }

std::size_t focused() {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    GtkWidget* const focus = gtk_window_get_focus(GTK_WINDOW(window));
    if (focus == fields[i] || gtk_widget_is_ancestor(focus, fields[i])) return i;
  }
  return 0;
}

GtkWidget* entryOf(const std::string& kind) {
#if GTK_MAJOR_VERSION >= 4
  if (kind == "password") return gtk_password_entry_new();
#endif
  GtkWidget* const entry = gtk_entry_new();
  if (kind == "hidden") gtk_entry_set_visibility(GTK_ENTRY(entry), FALSE);
  if (kind == "purpose") gtk_entry_set_input_purpose(GTK_ENTRY(entry), GTK_INPUT_PURPOSE_PASSWORD);
  return entry;
}

void addField(GtkWidget* box, const std::string& kind) {
  GtkWidget* const field = kind == "view" ? gtk_text_view_new() : entryOf(kind);
  g_signal_connect(kind == "view" ? static_cast<gpointer>(bufferOf(field)) : field, "changed",
                   G_CALLBACK(onChange), GSIZE_TO_POINTER(fields.size()));
  gtk_widget_set_size_request(field, 600, kind == "view" ? 200 : 30);
#if GTK_MAJOR_VERSION >= 4
  gtk_box_append(GTK_BOX(box), field);
#else
  gtk_container_add(GTK_CONTAINER(box), field);
#endif
  fields.push_back(field);
}

void show(GtkWidget* box) {
#if GTK_MAJOR_VERSION >= 4
  window = gtk_window_new();
  gtk_window_set_child(GTK_WINDOW(window), box);
#else
  window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_container_add(GTK_CONTAINER(window), box);
  gtk_widget_show_all(box);
#endif
  gtk_widget_grab_focus(fields.front());
  gtk_window_present(GTK_WINDOW(window));
}

void setText(GtkWidget* field, const std::string& text) {
  gchar* const plain = g_strcompress(text.c_str());
  if (GtkTextBuffer* const buffer = bufferOf(field)) {
    gtk_text_buffer_set_text(buffer, plain, -1);
  } else {
    int place = 0;
    gtk_editable_delete_text(GTK_EDITABLE(field), 0, -1);
    gtk_editable_insert_text(GTK_EDITABLE(field), plain, -1, &place);
    gtk_editable_set_position(GTK_EDITABLE(field), -1);
  }
  g_free(plain);
}

void copy(const std::string& text) {
#if GTK_MAJOR_VERSION >= 4
  gdk_clipboard_set_text(gtk_widget_get_clipboard(window), text.c_str());
#else
  gtk_clipboard_set_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), text.c_str(), -1);
#endif
  std::puts("copied");
  std::fflush(stdout);
}

void obey(const std::string& word, const std::string& rest) {
  if (word == "focus") gtk_widget_grab_focus(fields.at(std::stoul(rest)));
  if (word == "set") setText(fields[focused()], rest);
  if (word == "copy") copy(rest);
}

}  // namespace
}  // namespace quorvane::tests

int main(int count, char** arguments) {
  using namespace quorvane::tests;
#if GTK_MAJOR_VERSION >= 4
  gtk_init();
#else
  gtk_init(nullptr, nullptr);
#endif
  GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 4);
  for (int i = 1; i < count; ++i) addField(box, arguments[i]);
  if (fields.empty()) addField(box, "entry");
  show(box);
  GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
  const Commands commands(0, loop, obey);
  g_main_loop_run(loop);
  return 0;
}
