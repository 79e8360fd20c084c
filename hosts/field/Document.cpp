#include "hosts/field/Document.h"

#include <algorithm>
#include <utility>

#include "src/base/Text.h"

namespace quorvane::field {
namespace {

NSRange clamped(NSRange range, std::uint64_t size) {
  const std::uint64_t location = std::min(range.location, size);
  return {location, std::min(range.length, size - location)};
}

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

Document::Document(std::shared_ptr<Clipboard> clipboard) : clipboard_(std::move(clipboard)) {}

NSRange Document::selectedRange() {
  observe({});
  return closed_ ? NSRange{NSNotFound, 0} : selection_;
}

void Document::insertText(const std::u16string& text, NSRange replacementRange) {
  observe({ClientCallKind::insertText, text, {}, replacementRange});
  ++clientCalls_;
  if (text.empty() && replacementRange.location == NSNotFound && !marked_) return;
  const NSRange range = target(replacementRange);
  if (closed_ || !holds(range)) return;
  ++clientChanges_;
  replace(range, text);
}

void Document::setMarkedText(const NSAttributedString& marked, NSRange selectionRange,
                             NSRange replacementRange) {
  const std::u16string& text = marked.string;
  observe({ClientCallKind::setMarkedText, text, selectionRange, replacementRange});
  ++clientCalls_;
  const NSRange range = target(replacementRange);
  if (closed_ || !holds(range)) return;
  ++clientChanges_;
  replace(range, text);
  if (text.empty()) return;
  marked_ = NSRange{range.location, text.size()};
  looks_ = marked.attributes;
  const NSRange inside = clamped(selectionRange, text.size());
  selection_ = {range.location + inside.location, inside.length};
}

void Document::attributesForCharacterIndex(std::uint64_t /*index*/, NSRect& lineHeightRectangle) {
  observe({ClientCallKind::attributesForCharacterIndex, {}, {}, {}});
  if (!closed_) lineHeightRectangle = lineRectangle;
}

void Document::setText(std::u16string text) {
  text_ = std::move(text);
  moveTo(text_.size());
}

void Document::select(NSRange range) {
  unmark();
  selection_ = clamped(range, text_.size());
}

void Document::unmark() {
  marked_.reset();
  looks_.reset();
}

void Document::observe(const ClientCall& call) const {
  if (observer) observer(call);
}

// Ranges come from unsigned subtraction and may have wrapped: no sum of theirs is formed.
bool Document::holds(NSRange range) const {
  return range.location <= text_.size() && range.length <= text_.size() - range.location;
}

NSRange Document::target(NSRange replacementRange) const {
  if (replacementRange.location != NSNotFound) return replacementRange;
  return marked_.value_or(selection_);
}

void Document::replace(NSRange range, std::u16string_view text) {
  text_.replace(range.location, range.length, text);
  moveTo(range.location + text.size());
}

}  // namespace quorvane::field
