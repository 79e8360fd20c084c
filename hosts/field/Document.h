#pragma once
// The text of one text field: what its client calls and the keys passed on to it do to it.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/field/Clipboard.h"
#include "platform/InputMethodKit.h"

namespace quorvane::field {

/// A text field. Marked text stands in the text. Everything is counted in UTF-16 units.
class Document : public IMKTextInput {
 public:
  explicit Document(std::shared_ptr<Clipboard> clipboard = std::make_shared<MemoryClipboard>());
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  // What an input method calls. A replacement range that isn't wholly inside the text is refused:
  // nothing changes. Any range with location NSNotFound means "where you are": the marked text, or
  // failing that the selection.
  NSRange selectedRange() override;
  /// The text is no longer marked afterwards; the caret stands behind what was inserted. Nothing
  /// inserted where nothing is marked and no range given changes nothing, the selection included.
  void insertText(const std::u16string& text, NSRange replacementRange) override;
  /// A selection range beyond the marked text is clamped to it. Empty text unmarks.
  void setMarkedText(const NSAttributedString& marked, NSRange selectionRange,
                     NSRange replacementRange) override;
  void attributesForCharacterIndex(std::uint64_t index, NSRect& lineHeightRectangle) override;

  /// What a text field does with a key that was passed on to it. Key up does nothing. An arrow with
  /// a selection goes to its end on that side; up and down keep the column of the caret and stay
  /// where there is no such line. Command-A, C, X and V are the only command keys. A character
  /// ends the marked text, which becomes plain text before it; while it stands, no other key does
  /// anything.
  virtual void applyKey(const NSEvent& event, CopiedFor whom);
  void applyKey(const NSEvent& event) { applyKey(event, CopiedFor::Person); }

  [[nodiscard]] const std::u16string& text() const { return text_; }
  [[nodiscard]] NSRange selection() const { return selection_; }
  [[nodiscard]] std::optional<NSRange> markedRange() const { return marked_; }
  /// How the marked text looks; none where nothing is marked or nothing was said.
  [[nodiscard]] std::optional<MarkedTextAttributes> markedAttributes() const { return looks_; }
  /// Replaces everything; nothing is marked, the caret stands at the end.
  void setText(std::u16string text);
  /// Clamped to the text. The marked text is unmarked.
  void select(NSRange range);
  /// Marked text becomes plain text where it stands.
  void unmark();

  /// A closed document stays callable and drops what it is told.
  void close() { closed_ = true; }
  [[nodiscard]] bool closed() const { return closed_; }

  /// How many calls of insertText and setMarkedText were accepted.
  [[nodiscard]] std::uint64_t clientChanges() const { return clientChanges_; }

  /// The line rectangle of the insertion point, in screen coordinates. Height 0: can't tell.
  NSRect lineRectangle{120, 600, 1, 16};

 private:
  [[nodiscard]] bool holds(NSRange range) const;
  [[nodiscard]] NSRange target(NSRange replacementRange) const;
  void replace(NSRange range, std::u16string_view text);
  void insertKey(std::u16string_view text);
  void applyCommand(const NSEvent& event, CopiedFor whom);
  void applyControl(char16_t code);
  bool copySelection(CopiedFor whom);
  std::u16string toPaste(CopiedFor whom);
  void eraseSelectionOr(NSRange otherwise);
  void moveTo(std::uint64_t position);
  [[nodiscard]] std::uint64_t selectionEnd() const {
    return selection_.location + selection_.length;
  }
  [[nodiscard]] std::uint64_t lineAbove(std::uint64_t position) const;
  [[nodiscard]] std::uint64_t lineBelow(std::uint64_t position) const;
  [[nodiscard]] std::uint64_t inLine(std::uint64_t start, std::uint64_t column) const;
  [[nodiscard]] std::uint64_t before(std::uint64_t position) const;
  [[nodiscard]] std::uint64_t behind(std::uint64_t position) const;
  [[nodiscard]] std::uint64_t lineStart(std::uint64_t position) const;
  [[nodiscard]] std::uint64_t lineEnd(std::uint64_t position) const;

  std::shared_ptr<Clipboard> clipboard_;
  std::u16string text_;
  NSRange selection_;
  std::optional<NSRange> marked_;
  std::optional<MarkedTextAttributes> looks_;
  bool closed_ = false;
  std::uint64_t clientChanges_ = 0;
};

}  // namespace quorvane::field
