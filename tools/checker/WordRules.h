#pragma once
// Which word of a scanned text is to be checked, if any.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "tools/checker/TextRecord.h"

namespace quorvane::checker {

/// True where the key just typed is the byte before the cursor and ends a word or stands between
/// two.
bool typedBoundary(const TextRecord& record);

/// A word by its place in the text.
struct Word {
  std::size_t start = 0;
  std::size_t end = 0;
  bool opensSentence = false;
  bool joined = false;  ///< behind a hyphen
};

/// The word that the key just typed has ended, where its spelling is our concern. A word stays
/// unchecked that holds a digit, a capital behind its first letter or an unknown byte, that has an
/// apostrophe at one end only (it may stand for what was left out), or that belongs to an address
/// or a path. Enclosing apostrophes aren't part of it.
std::optional<Word> endedWord(const TextRecord& record);

/// What stands between white space, an opening mark or the beginning and the key just typed, which
/// has ended it: a word, or any ASCII characters.
std::optional<Word> endedRun(const TextRecord& record);

/// The word as a dictionary spells it: ASCII, apostrophes straight.
std::string spelling(std::span<const std::uint8_t> word);

}  // namespace quorvane::checker
