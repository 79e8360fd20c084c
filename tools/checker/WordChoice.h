#pragma once
// What to put in the place of a word that somebody has just typed.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/checker/Vouching.h"

namespace quorvane::checker {

struct TypedWord {
  std::string spelt;  ///< ASCII with straight apostrophes
  bool opensSentence = false;
  bool joined = false;  ///< behind a hyphen
  SessionKey session{};
  std::vector<std::uint8_t> before{};  ///< what stands before it, as far back as the text goes
  std::uint8_t endedBy = ' ';
};

/// Several words, the last of them the one just typed.
struct Passage {
  std::size_t start = 0;  ///< its place in the text
  std::string typed;
  std::string meant;
  bool certain = false;  ///< otherwise it may be offered
};

class WordChoice {
 public:
  virtual ~WordChoice() = default;

  /// What the word surely was meant to be. Empty: it stays as it is.
  virtual std::optional<std::string> replacement(const TypedWord& word) = 0;
  /// A mistake that shows beside the word only, which itself stays; asked behind `replacement`.
  virtual std::optional<Passage> passage(const TypedWord& /*word*/) { return std::nullopt; }
  /// The replacement given last didn't reach the document.
  virtual void notMade() {}
  /// What it may have been meant to be, the best first. Empty for a word that exists.
  virtual std::vector<std::string> offers(const TypedWord& word) = 0;
};

}  // namespace quorvane::checker
