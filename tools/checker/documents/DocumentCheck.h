#pragma once
// Looks through a text for mistakes, a little at a time.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tools/checker/Fix.h"
#include "tools/checker/documents/DocumentText.h"

namespace quorvane::checker {

struct CheckScope {
  bool spelling = true;
  bool grammar = true;
};

struct Finding {
  std::size_t start = 0;  ///< in UTF-16 units, like its length
  std::u16string found;
  std::vector<std::u16string> suggestions;  ///< one at least, the best first
};

/// What takes the place of each finding; empty: nothing does.
using Decisions = std::vector<std::optional<std::u16string>>;

class DocumentCheck {
 public:
  /// `choice` outlives this.
  DocumentCheck(DocumentText text, WordChoice& choice, CheckScope scope);

  /// Goes on to the next place that may hold a mistake, and judges it. At most some hundred units
  /// are passed over, and one word is judged. False once all has been seen.
  bool step();
  [[nodiscard]] bool done() const { return next_ > text_.bytes.size(); }
  /// Units seen, of all.
  [[nodiscard]] std::size_t seen() const { return std::min(next_, text_.units.size()); }

  [[nodiscard]] const DocumentText& text() const { return text_; }
  /// In the text's order; no two overlap.
  [[nodiscard]] const std::vector<Finding>& findings() const { return findings_; }

 private:
  void judgeWord(std::size_t end);
  void judgeMark(std::size_t mark);
  [[nodiscard]] TextRecord recordUpTo(std::size_t end) const;
  [[nodiscard]] std::size_t windowStart(std::size_t end) const;
  void add(Finding finding);

  DocumentText text_;
  WordChoice& choice_;
  CheckScope scope_;
  std::size_t next_ = 0;  ///< one place behind the last unit ends a word, too
  std::vector<Finding> findings_;
};

/// The text with what has been decided in the place of the findings.
std::u16string corrected(const std::u16string& text, const std::vector<Finding>& findings,
                         const Decisions& decisions);
/// The text with each finding in square brackets, a colon and the first suggestion behind it.
std::u16string markedUp(const std::u16string& text, const std::vector<Finding>& findings);

}  // namespace quorvane::checker
