#include "tools/checker/PasteInto.h"

#include <array>

#include "src/base/BigEndian.h"

namespace quorvane::checker {

bool pasteInto(std::int32_t client, std::string_view text, ClipboardLoan& clipboard,
               InputMethodPort& port) {
  constexpr std::int32_t kMessagePaste = 250;
  std::array<std::uint8_t, sizeof client> payload{};
  putBigEndian(payload, 0, client);
  if (!port.find() || !clipboard.lend(text)) return false;
  if (port.send(kMessagePaste, payload)) return true;
  clipboard.end();
  return false;
}

}  // namespace quorvane::checker
