#pragma once
// A text field as the controller gets it: its calls are told to whoever listens, and what of them
// reached the field is counted.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/InputMethodKit.h"

namespace quorvane::field {

enum class ClientCallKind {
  selectedRange,
  insertText,
  setMarkedText,
  attributesForCharacterIndex,
};

/// One call of an input method on a text field. `text` is valid while the observer runs.
struct ClientCall {
  ClientCallKind kind = ClientCallKind::selectedRange;
  std::u16string_view text;
  NSRange selectionRange;
  NSRange replacementRange;
};

/// One readable line: `insertText "abc" {2,3}`, `setMarkedText "the" {5,0} {2,3}`. NSNotFound is
/// written `-`; line feeds, tabs, quotes and backslashes in the text are escaped.
std::string describe(const ClientCall& call);

/// Stands before a text field of any kind, in this process or in another, for as long as that
/// lives: the identity of a client is its address.
class Client final : public IMKTextInput {
 public:
  explicit Client(IMKTextInput& field) : field_(field) {}
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  NSRange selectedRange() override;
  void insertText(const std::u16string& text, NSRange replacementRange) override;
  void setMarkedText(const NSAttributedString& text, NSRange selectionRange,
                     NSRange replacementRange) override;
  void attributesForCharacterIndex(std::uint64_t index, NSRect& lineHeightRectangle) override;

  /// How often text has reached the field.
  [[nodiscard]] std::uint64_t changes() const { return changes_; }

  /// Told of each call just before it is carried out.
  std::function<void(const ClientCall&)> observer;

 private:
  void observe(const ClientCall& call) const;
  [[nodiscard]] bool takes(NSRange replacementRange);

  IMKTextInput& field_;
  bool marked_ = false;
  std::uint64_t changes_ = 0;
};

}  // namespace quorvane::field
