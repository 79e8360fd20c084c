#pragma once
// What to do about a word: nothing, unless it is surely another one. A silent correction must be
// sure, or not happen.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/corrections/Bounds.h"
#include "tools/corrections/EditCost.h"
#include "tools/corrections/WordIndex.h"

namespace quorvane::corrections {

struct Candidate {
  std::string word;
  float score = 0;
};

/// How the word stands in its text. Joined: behind a hyphen.
enum class Writing { Small, CapitalAtStart, Capital, Joined };

enum class Rule {
  NotAWord,    ///< none of ours: too short, too long, or of other characters
  Known,       ///< it exists
  Nothing,     ///< no word is near
  BelowFloor,  ///< the best is too unlikely
  NarrowLead,  ///< the second is too likely as well
  Itself,      ///< rather another form, a foreign word or a name of programmers, see `isItself`
  Sure
};

struct Judgement {
  Rule rule = Rule::Nothing;
  std::vector<Candidate> ranked;  ///< the best first
  bool doubtful = false;          ///< see `BoundsRow`
  Bounds needed;
  float own = -100;  ///< score of the word as it stands, where some list has it

  /// Of the best over the second and the word as it stands; large where there is neither.
  [[nodiscard]] float lead() const;
};

/// Whether some dictionary has a word, as it is written.
using Accepts = std::function<bool(const std::string&)>;

class Decision {
 public:
  Decision(const WordIndex& index, const EditCost& cost) : index_(index), cost_(cost) {}

  /// `word` in small letters. A word that only the dictionaries know is judged like an unknown one:
  /// they are slow, and need be asked about it only once a change is at hand.
  [[nodiscard]] Judgement judge(std::string_view word, Writing writing,
                                const Accepts& accepts) const;
  /// The score of a word that may stand for `typed`; both in small letters.
  [[nodiscard]] float score(std::string_view candidate, std::string_view typed) const;

 private:
  [[nodiscard]] std::vector<Candidate> rank(std::string_view word, const Accepts& accepts) const;
  [[nodiscard]] std::vector<Candidate> best(const std::vector<WordIndex::Entry>& entries,
                                            std::string_view word, std::size_t most) const;
  [[nodiscard]] bool exists(std::string_view word, const Accepts& accepts) const;
  [[nodiscard]] bool isDoubtful(std::string_view word, std::string_view best) const;
  [[nodiscard]] bool isItself(std::string_view word, const Judgement& judgement,
                              const Accepts& accepts) const;

  const WordIndex& index_;
  const EditCost& cost_;
};

}  // namespace quorvane::corrections
