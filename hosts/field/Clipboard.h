#pragma once
// What text fields copy to and paste from.

#include <string>
#include <string_view>
#include <utility>

namespace quorvane::field {

/// Whose keys copy: what a command of the Input Menu has copied is taken back once it has been
/// read.
enum class CopiedFor { Person, Command };

class Clipboard {
 public:
  virtual ~Clipboard() = default;

  /// Empty where there is nothing.
  [[nodiscard]] virtual std::u16string text() const = 0;
  /// What a command's Paste is to insert, which may be other than what a person would paste.
  virtual std::u16string takeForCommand() { return text(); }
  /// Empty: nothing is selected that a command could have copied. False where the clipboard is as
  /// it was, since the text can't be kept there.
  virtual bool copy(std::u16string_view text, CopiedFor whom) = 0;
};

/// Of one process alone.
class MemoryClipboard final : public Clipboard {
 public:
  explicit MemoryClipboard(std::u16string text = {}) : text_(std::move(text)) {}

  [[nodiscard]] std::u16string text() const override { return text_; }
  bool copy(std::u16string_view text, CopiedFor /*whom*/) override {
    if (!text.empty()) text_ = text;
    return true;
  }

 private:
  std::u16string text_;
};

}  // namespace quorvane::field
