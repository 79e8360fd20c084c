#pragma once
// A window with plain text, which may be longer than it.

#include <vector>

#include "tools/checker/documents/Window.h"

namespace quorvane::checker {

class TextWindow final : public Window {
 public:
  /// Lines that are too long are broken.
  TextWindow(std::u16string title, std::u16string_view text);
  /// Lines that are too long are cut.
  TextWindow(std::u16string title, std::vector<std::u16string> lines);

  [[nodiscard]] WindowText shown() const override;
  WindowOutcome press(char32_t key) override;

 private:
  [[nodiscard]] std::size_t lastFirst() const;

  std::u16string title_;
  std::vector<std::u16string> lines_;
  std::size_t first_ = 0;  ///< that shows
};

}  // namespace quorvane::checker
