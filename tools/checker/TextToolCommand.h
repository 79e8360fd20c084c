#pragma once
// A text tool as a command: what the client has copied, changed, and pasted back.

#include <cstdint>
#include <string_view>

#include "platform/TextEncoding.h"
#include "tools/checker/ClipboardLoan.h"
#include "tools/checker/InputMethodPort.h"

namespace quorvane::checker {

enum class ToolEnd { Pasted, NothingCopied, NoText, NothingToChange, NotPasted };
std::string_view textOf(ToolEnd end);

/// `client` is the process to paste into. The clipboard is as it was, at once or once that has
/// pasted.
ToolEnd runTextTool(std::uint32_t command, std::int32_t client, ClipboardLoan& clipboard,
                    TextEncoding& encoding, InputMethodPort& port);

}  // namespace quorvane::checker
