#pragma once
// The window of a check: first it looks through the text, then it lists what it has found and asks
// about each.

#include <optional>

#include "tools/checker/documents/DocumentCheck.h"
#include "tools/checker/documents/Window.h"

namespace quorvane::checker {

/// How much a check finds at most; the text behind that is left for another one.
inline constexpr std::size_t kMostFindings = 500;

class CheckWindow final : public Window {
 public:
  /// `marks`: findings aren't replaced but marked in the text.
  CheckWindow(std::u16string title, DocumentCheck check, bool marks);

  [[nodiscard]] WindowText shown() const override;
  /// A digit takes a suggestion, Return the first; `s` leaves the text as it is; `a` takes the
  /// first for this finding and all behind it; Escape gives up. After the last finding it closes.
  WindowOutcome press(char32_t key) override;
  bool work() override;
  [[nodiscard]] std::u16string textToPaste() const override;
  [[nodiscard]] bool checks() const override { return true; }

 private:
  [[nodiscard]] bool looking() const;
  [[nodiscard]] const Finding& current() const { return check_.findings()[decisions_.size()]; }
  [[nodiscard]] bool decided() const { return decisions_.size() == check_.findings().size(); }
  WindowOutcome decide(std::optional<std::u16string> text);
  WindowOutcome acceptAll();
  [[nodiscard]] std::u16string heading() const;
  void showFinding(WindowText& text) const;
  [[nodiscard]] std::u16string choices(std::size_t count) const;
  /// How many suggestions there is room for.
  [[nodiscard]] std::size_t offered() const;
  void listFindings(WindowText& text) const;
  [[nodiscard]] std::u16string lineOf(std::size_t index) const;
  [[nodiscard]] std::u16string context() const;

  std::u16string title_;
  DocumentCheck check_;
  bool marks_;
  Decisions decisions_;  ///< about the findings so far
};

}  // namespace quorvane::checker
