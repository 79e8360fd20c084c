#pragma once
// From where on a session's text is known to agree with the document. What was typed while no main
// application ran is missing from the text, and after a reset the text may begin inside a word: a
// word that begins before the point known is left alone.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "tools/checker/TextRecord.h"

namespace quorvane::checker {

/// Handles are an input method's own: the next one counts them from the start again.
struct SessionKey {
  std::int32_t inputMethod = 0;  ///< process id
  std::uint32_t handle = 0;
  auto operator<=>(const SessionKey&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};

struct Sight {
  std::optional<std::size_t> vouchedFrom;  ///< empty: no word may be touched
  bool isNew = false;                      ///< false: this very text was scanned before
};

class Vouching {
 public:
  /// `textsBeganWithUs`: false where an input method was running before we were.
  explicit Vouching(bool textsBeganWithUs) : textsBeganWithUs_(textsBeganWithUs) {}

  /// Takes in one scan. `change` is the session's change code.
  Sight observe(const SessionKey& session, const TextRecord& record, std::uint32_t change);
  /// What was observed last has been replaced by `text`: should it be typed again, it is news.
  void mended(const SessionKey& session, const std::vector<std::uint8_t>& text) {
    known(session).text = text;
  }

 private:
  struct Known {
    std::vector<std::uint8_t> text;  ///< at the last scan, as far as the cursor
    std::optional<std::size_t> vouchedFrom;
  };
  Known& known(const SessionKey& session);

  bool textsBeganWithUs_;
  std::map<SessionKey, Known> sessions_;
};

}  // namespace quorvane::checker
