#pragma once
// What text fields copy to and paste from.

#include <string>
#include <string_view>
#include <utility>

namespace quorvane::field {

class Clipboard {
 public:
  virtual ~Clipboard() = default;

  /// Empty where there is nothing.
  [[nodiscard]] virtual std::u16string text() const = 0;
  virtual void copy(std::u16string_view text) = 0;
};

/// Of one process alone.
class MemoryClipboard final : public Clipboard {
 public:
  explicit MemoryClipboard(std::u16string text = {}) : text_(std::move(text)) {}

  [[nodiscard]] std::u16string text() const override { return text_; }
  void copy(std::u16string_view text) override { text_ = text; }

 private:
  std::u16string text_;
};

}  // namespace quorvane::field
