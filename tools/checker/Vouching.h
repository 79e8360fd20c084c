#pragma once
// From where on a session's text is known to agree with the document. What was typed while no main
// application ran is missing from the text, and after a reset the text may begin inside a word: a
// word that begins before the point known is left alone.

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "tools/checker/TextRecord.h"

namespace quorvane::checker {

struct Sight {
  std::optional<std::size_t> vouchedFrom;  ///< empty: no word may be touched
  bool isNew = false;                      ///< false: this very text was scanned before
};

class Vouching {
 public:
  /// `textsBeganWithUs`: false where an input method was running before we were.
  explicit Vouching(bool textsBeganWithUs) : textsBeganWithUs_(textsBeganWithUs) {}

  /// Takes in one scan. `change` is the session's change code. A fix changes nothing before the
  /// point known, so that it needn't be told here.
  Sight observe(std::uint32_t session, const TextRecord& record, std::uint32_t change);

 private:
  struct Known {
    std::vector<std::uint8_t> text;  ///< at the last scan, as far as the cursor
    std::optional<std::size_t> vouchedFrom;
  };
  Known& known(std::uint32_t session);

  bool textsBeganWithUs_;
  std::map<std::uint32_t, Known> sessions_;
};

}  // namespace quorvane::checker
