#include "hosts/field/Client.h"

#include "src/base/Text.h"

namespace quorvane::field {
namespace {

std::string quoted(std::u16string_view text) {
  std::string result = "\"";
  for (const char byte : toUtf8(text)) {
    switch (byte) {
      case '\n':
        result += "\\n";
        break;
      case '\t':
        result += "\\t";
        break;
      case '"':
      case '\\':
        result += '\\';
        [[fallthrough]];
      default:
        result += byte;
    }
  }
  return result + '"';
}

std::string describe(NSRange range) {
  const auto number = [](std::uint64_t value) {
    return value == NSNotFound ? std::string("-") : std::to_string(value);
  };
  return '{' + number(range.location) + ',' + number(range.length) + '}';
}

}  // namespace

std::string describe(const ClientCall& call) {
  switch (call.kind) {
    case ClientCallKind::insertText:
      return "insertText " + quoted(call.text) + ' ' + describe(call.replacementRange);
    case ClientCallKind::setMarkedText:
      return "setMarkedText " + quoted(call.text) + ' ' + describe(call.selectionRange) + ' ' +
             describe(call.replacementRange);
    case ClientCallKind::attributesForCharacterIndex:
      return "attributesForCharacterIndex";
    case ClientCallKind::selectedRange:
      break;
  }
  return "selectedRange";
}

NSRange Client::selectedRange() {
  observe({});
  return field_.selectedRange();
}

void Client::insertText(const std::u16string& text, NSRange replacementRange) {
  observe({ClientCallKind::insertText, text, {}, replacementRange});
  const bool nothing = text.empty() && replacementRange.location == NSNotFound && !marked_;
  if (!nothing && takes(replacementRange)) {
    ++changes_;
    marked_ = false;
  }
  field_.insertText(text, replacementRange);
}

void Client::setMarkedText(const NSAttributedString& text, NSRange selectionRange,
                           NSRange replacementRange) {
  observe({ClientCallKind::setMarkedText, text.string, selectionRange, replacementRange});
  if (takes(replacementRange)) {
    ++changes_;
    marked_ = !text.string.empty();
  }
  field_.setMarkedText(text, selectionRange, replacementRange);
}

void Client::attributesForCharacterIndex(std::uint64_t index, NSRect& lineHeightRectangle) {
  observe({ClientCallKind::attributesForCharacterIndex, {}, {}, {}});
  field_.attributesForCharacterIndex(index, lineHeightRectangle);
}

void Client::observe(const ClientCall& call) const {
  if (observer) observer(call);
}

// A field answers nothing to a change. One without a selection has gone; a place beyond the
// selection may be outside the text, and then be refused.
bool Client::takes(NSRange replacementRange) {
  const NSRange selection = field_.selectedRange();
  if (selection.location == NSNotFound) return false;
  if (replacementRange.location == NSNotFound) return true;
  const std::uint64_t end = selection.location + selection.length;
  return replacementRange.location <= end &&
         replacementRange.length <= end - replacementRange.location;
}

}  // namespace quorvane::field
