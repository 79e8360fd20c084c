#pragma once
// A word list as completion loads it: a saved trie and its seal.

#include <span>
#include <string>
#include <string_view>

namespace quorvane {

/// The bytes of the file. Throws marisa::Exception where no trie can be built of the words.
std::string savedWordList(std::span<const std::string_view> words);

}  // namespace quorvane
