#include "hosts/desktop/PrintableLine.h"

#include <glib.h>

#include <memory>

namespace quorvane::desktop {

std::string printableLine(const std::string& text) {
  const std::unique_ptr<char, decltype(&g_free)> valid(
      g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())), g_free);
  std::string line;
  for (const char* at = valid.get(); *at != '\0';) {
    const char* const next = g_utf8_next_char(at);
    if (g_unichar_iscntrl(g_utf8_get_char(at)) == FALSE) {
      line.append(at, next);
    } else {
      line.push_back(*at == '\n' ? ' ' : '?');
    }
    at = next;
  }
  return line;
}

}  // namespace quorvane::desktop
