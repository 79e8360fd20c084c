// What a document does with a key that was passed on to it.

#include "hosts/field/Document.h"

#include <algorithm>

namespace quorvane::field {
namespace {

constexpr char16_t kHome = 1, kEnter = 3, kEnd = 4, kBackspace = 8, kTab = 9, kReturn = 13,
                   kLeft = 28, kRight = 29, kUp = 30, kDown = 31, kForwardDelete = 127;

bool isHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool isLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

bool isControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }

/// Code points that the platform keeps for keys without a character.
bool isFunctionKey(char16_t unit) { return unit >= 0xF700 && unit <= 0xF8FF; }

}  // namespace

void Document::applyKey(const NSEvent& event, CopiedFor whom) {
  if (closed_ || event.type != NSEventType::KeyDown || event.characters.empty()) return;
  if (event.modifierFlags & (NSEventModifierFlagCommand | NSEventModifierFlagControl)) {
    return applyCommand(event, whom);
  }
  const char16_t first = event.characters.front();
  if (isFunctionKey(first)) return;
  if (isControl(first)) return applyControl(first);
  insertKey(event.characters);
}

void Document::applyCommand(const NSEvent& event, CopiedFor whom) {
  constexpr std::uint32_t kOthers = NSEventModifierFlagControl | NSEventModifierFlagOption |
                                    NSEventModifierFlagShift | NSEventModifierFlagFunction;
  if (marked_ || (event.modifierFlags & kOthers) != 0 || event.characters.size() != 1) return;
  const char16_t letter = event.characters.front() | 0x20;
  if (letter == u'a') selection_ = {0, text_.size()};
  if (letter == u'c') copySelection(whom);
  if (letter == u'x' && copySelection(whom)) replace(selection_, {});
  if (letter == u'v') replace(selection_, toPaste(whom));
}

void Document::applyControl(char16_t code) {
  switch (code) {
    case kReturn:
    case kEnter:
      return insertKey(u"\n");
    case kTab:
      return insertKey(u"\t");
    case kBackspace: {
      const std::uint64_t start = before(selection_.location);
      return eraseSelectionOr({start, selection_.location - start});
    }
    case kForwardDelete:
      return eraseSelectionOr({selectionEnd(), behind(selectionEnd()) - selectionEnd()});
    default:
      break;
  }
  if (marked_) return;
  const bool selected = selection_.length > 0;
  switch (code) {
    case kLeft:
      return moveTo(selected ? selection_.location : before(selection_.location));
    case kRight:
      return moveTo(selected ? selectionEnd() : behind(selectionEnd()));
    case kUp:
      return moveTo(lineAbove(selection_.location));
    case kDown:
      return moveTo(lineBelow(selectionEnd()));
    case kHome:
      return moveTo(0);
    case kEnd:
      return moveTo(text_.size());
    default:
      break;
  }
}

/// Keys keep their order: what was marked stands before them.
void Document::insertKey(std::u16string_view text) {
  if (marked_) moveTo(marked_->location + marked_->length);
  replace(selection_, text);
}

bool Document::copySelection(CopiedFor whom) {
  const auto selected = std::u16string_view(text_).substr(selection_.location, selection_.length);
  if (selected.empty() && whom == CopiedFor::Person) return false;
  return clipboard_->copy(selected, whom);
}

std::u16string Document::toPaste(CopiedFor whom) {
  return whom == CopiedFor::Command ? clipboard_->takeForCommand() : clipboard_->text();
}

void Document::eraseSelectionOr(NSRange otherwise) {
  if (marked_) return;
  replace(selection_.length > 0 ? selection_ : otherwise, {});
}

void Document::moveTo(std::uint64_t position) {
  unmark();
  selection_ = {position, 0};
}

std::uint64_t Document::before(std::uint64_t position) const {
  if (position == 0) return 0;
  const bool pair =
      position >= 2 && isLowSurrogate(text_[position - 1]) && isHighSurrogate(text_[position - 2]);
  return position - (pair ? 2 : 1);
}

std::uint64_t Document::behind(std::uint64_t position) const {
  if (position >= text_.size()) return text_.size();
  const bool pair = position + 1 < text_.size() && isHighSurrogate(text_[position]) &&
                    isLowSurrogate(text_[position + 1]);
  return position + (pair ? 2 : 1);
}

std::uint64_t Document::lineStart(std::uint64_t position) const {
  if (position == 0) return 0;
  const std::size_t feed = text_.rfind(u'\n', position - 1);
  return feed == std::u16string::npos ? 0 : feed + 1;
}

std::uint64_t Document::lineEnd(std::uint64_t position) const {
  const std::size_t feed = text_.find(u'\n', position);
  return feed == std::u16string::npos ? text_.size() : feed;
}

std::uint64_t Document::lineAbove(std::uint64_t position) const {
  const std::uint64_t start = lineStart(position);
  return start == 0 ? position : inLine(lineStart(start - 1), position - start);
}

std::uint64_t Document::lineBelow(std::uint64_t position) const {
  const std::uint64_t end = lineEnd(position);
  return end == text_.size() ? position : inLine(end + 1, position - lineStart(position));
}

std::uint64_t Document::inLine(std::uint64_t start, std::uint64_t column) const {
  const std::uint64_t position = std::min(start + column, lineEnd(start));
  const bool insidePair = position > 0 && position < text_.size() &&
                          isLowSurrogate(text_[position]) && isHighSurrogate(text_[position - 1]);
  return insidePair ? position - 1 : position;
}

}  // namespace quorvane::field
