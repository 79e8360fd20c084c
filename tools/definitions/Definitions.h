#pragma once
// What the word data of completion says of words.

#include <memory>
#include <string>
#include <string_view>

#include "src/base/Instance.h"
#include "src/completion/Cached.h"
#include "src/completion/WordTable.h"

namespace quorvane {

class Definitions {
 public:
  /// Out of the snapshot that completion keeps, or made anew. Null where there is no word data.
  /// `instance` outlives this.
  static std::unique_ptr<Definitions> open(Instance& instance);

  /// How it is spoken, in brackets, then a line for each meaning; empty for a word that the data
  /// doesn't know.
  std::u16string of(std::u16string_view word);

 private:
  Definitions(Instance& instance, Cached<WordTable> words)
      : instance_(instance), words_(std::move(words)) {}

  Instance& instance_;
  Cached<WordTable> words_;
};

}  // namespace quorvane
