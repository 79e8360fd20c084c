#pragma once
// Decides about words by the word data of completion, our own tables and the keyboard in use.

#include <memory>
#include <optional>
#include <string>

#include "platform/Platform.h"
#include "src/completion/Cached.h"
#include "tools/corrections/Decision.h"

namespace quorvane::corrections {

class Corrector {
 public:
  /// The index comes out of a snapshot, or is made and kept in one. Null where the word data is
  /// missing or can't be read: whoever knows too few words finds mistakes everywhere.
  static std::unique_ptr<Corrector> open(Platform& platform);

  /// Whether the next start finds the index, and needn't make it anew.
  static bool indexIsKept(Platform& platform);

  /// Until then no key has neighbours.
  void setNeighbours(const KeyNeighbours& neighbours);

  /// See `Decision`.
  Judgement judge(std::string_view word, Writing writing, const Accepts& accepts);
  float score(std::string_view candidate, std::string_view typed);
  /// See `WordIndex`.
  std::optional<bool> beginsWithVowel(std::string_view word);

 private:
  explicit Corrector(Cached<WordIndex> index);

  Cached<WordIndex> index_;
  EditWeights weights_;
  EditCost cost_;
};

}  // namespace quorvane::corrections
