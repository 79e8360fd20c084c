#include "hosts/field/Document.h"

#include <algorithm>
#include <utility>

namespace quorvane::field {
namespace {

NSRange clamped(NSRange range, std::uint64_t size) {
  const std::uint64_t location = std::min(range.location, size);
  return {location, std::min(range.length, size - location)};
}

}  // namespace

Document::Document(std::shared_ptr<Clipboard> clipboard) : clipboard_(std::move(clipboard)) {}

NSRange Document::selectedRange() { return closed_ ? NSRange{NSNotFound, 0} : selection_; }

void Document::insertText(const std::u16string& text, NSRange replacementRange) {
  if (text.empty() && replacementRange.location == NSNotFound && !marked_) return;
  const NSRange range = target(replacementRange);
  if (closed_ || !holds(range)) return;
  ++clientChanges_;
  replace(range, text);
}

void Document::setMarkedText(const NSAttributedString& marked, NSRange selectionRange,
                             NSRange replacementRange) {
  const std::u16string& text = marked.string;
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
