#include "hosts/desktop/Console.h"

#include <string>

namespace quorvane::desktop {

void Console::print(std::string_view line) {
  std::string text(line);
  if (!text.ends_with('\n')) text.push_back('\n');
  writer_.write(text);
}

}  // namespace quorvane::desktop
