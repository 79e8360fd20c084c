#pragma once
// The words of a saved trie, read with a look at every bound. The trie's own library has none: it
// follows each link of a file wherever it leads.

#include <cstdint>
#include <span>
#include <stdexcept>

#include "src/completion/TextPile.h"

namespace quorvane {

struct DamagedTrie : std::runtime_error {
  using runtime_error::runtime_error;
};

struct SavedWords {
  TextPile words;  ///< in the order of the trie
  int flags = 0;   ///< what the trie was built with
};

/// Throws DamagedTrie where `file` isn't one whole trie, or its words have no bounds.
SavedWords wordsOfSavedTrie(std::span<const std::uint8_t> file);

}  // namespace quorvane
