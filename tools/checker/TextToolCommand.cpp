#include "tools/checker/TextToolCommand.h"

#include <array>

#include "src/base/Text.h"
#include "tools/checker/PasteInto.h"
#include "tools/checker/TextTools.h"

namespace quorvane::checker {

std::string_view textOf(ToolEnd end) {
  constexpr std::array<std::string_view, 5> kTexts{"pasted", "nothing was copied",
                                                   "what was copied is no text",
                                                   "nothing to change", "the text can't be pasted"};
  return kTexts.at(static_cast<std::size_t>(end));
}

ToolEnd runTextTool(std::uint32_t command, std::int32_t client, ClipboardLoan& clipboard,
                    TextEncoding& encoding, InputMethodPort& port) {
  const auto copied = clipboard.takeCopied();
  if (!copied) return ToolEnd::NothingCopied;
  const auto text =
      encoding.initWithData({reinterpret_cast<const std::uint8_t*>(copied->data()), copied->size()},
                            NSStringEncoding::UTF8);
  if (!text) return ToolEnd::NoText;
  const auto changed = afterTextTool(command, *text);
  if (!changed || *changed == *text) return ToolEnd::NothingToChange;
  return pasteInto(client, toUtf8(*changed), clipboard, port) ? ToolEnd::Pasted
                                                              : ToolEnd::NotPasted;
}

}  // namespace quorvane::checker
