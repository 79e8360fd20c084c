#pragma once
// A paste by way of the input method, which presses the keys for it.

#include <cstdint>
#include <string_view>

#include "tools/checker/ClipboardLoan.h"
#include "tools/checker/InputMethodPort.h"

namespace quorvane::checker {

/// `client` is a process id, 0 where it isn't known. False, with the clipboard as it was, where the
/// text can't be put there or nobody takes the message.
bool pasteInto(std::int32_t client, std::string_view text, ClipboardLoan& clipboard,
               InputMethodPort& port);

}  // namespace quorvane::checker
