#pragma once
// The word that completion holds as marked text of a client. Completion lies above; what it holds
// is known here because whoever writes into the client must have it ended first.

#include <string>

#include "src/base/Instance.h"

namespace quorvane {

class WordInProgress {
 public:
  virtual ~WordInProgress() = default;
  /// The word stands in the document as it was typed. Nothing happens without one.
  virtual void keepTyped() = 0;
  /// Its typed letters; empty: none is held.
  [[nodiscard]] virtual const std::u16string& typed() const = 0;
};

struct WordInProgressState {
  WordInProgress* latest = nullptr;  ///< of whoever got the latest event; null where it has gone
  /// A word is held at this event: a quote or a dash is left for completion to commit with it.
  bool held = false;
};

inline void keepTypedWord(Instance& instance) {
  WordInProgress* const word = instance.state<WordInProgressState>().latest;
  if (word != nullptr) word->keepTyped();
}

}  // namespace quorvane
