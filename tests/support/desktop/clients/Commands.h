#pragma once
// What the programs of the test desktop share: lines out, and commands in lines. A command is a
// word and, behind a blank, the rest of its line.

#include <glib.h>

#include <array>
#include <cstdio>
#include <string>

namespace quorvane::tests {

/// Text of one line, as `g_strcompress` takes it back; letters beyond ASCII stay as they are.
inline std::string escaped(const char* text) {
  std::array<char, 129> asTheyAre{};
  for (std::size_t i = 0; i + 1 < asTheyAre.size(); ++i) {
    asTheyAre[i] = static_cast<char>(0x80 + i);
  }
  gchar* const made = g_strescape(text == nullptr ? "" : text, asTheyAre.data());
  std::string result(made);
  g_free(made);
  return result;
}

/// Gives each command to `obey(word, rest)`; leaves the loop at `quit` and at the end of input.
class Commands {
 public:
  using Obey = void (*)(const std::string& word, const std::string& rest);

  Commands(int descriptor, GMainLoop* loop, Obey obey) : loop_(loop), obey_(obey) {
    GIOChannel* const channel = g_io_channel_unix_new(descriptor);
    g_io_add_watch(channel, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR), onInput,
                   this);
    g_io_channel_unref(channel);
  }

 private:
  static gboolean onInput(GIOChannel* channel, GIOCondition /*condition*/, gpointer data) {
    auto& self = *static_cast<Commands*>(data);
    gchar* line = nullptr;
    gsize end = 0;
    const GIOStatus status = g_io_channel_read_line(channel, &line, nullptr, &end, nullptr);
    if (status == G_IO_STATUS_AGAIN) return TRUE;
    const std::string command(line == nullptr ? "quit" : line, line == nullptr ? 4 : end);
    g_free(line);
    if (command == "quit") {
      g_main_loop_quit(self.loop_);
      return FALSE;
    }
    const std::size_t blank = command.find(' ');
    self.obey_(command.substr(0, blank),
               blank == std::string::npos ? "" : command.substr(blank + 1));
    return (g_io_channel_get_buffer_condition(channel) & G_IO_IN) == 0 ||
           onInput(channel, G_IO_IN, data);
  }

  GMainLoop* loop_;
  Obey obey_;
};

}  // namespace quorvane::tests
