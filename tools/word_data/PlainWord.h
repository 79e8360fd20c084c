#pragma once
// The spelling of a key of the word list: a to z.

#include <string>
#include <string_view>

namespace quorvane::word_data {

/// One letter or more, each of a to z.
bool isPlain(std::string_view word);

/// Whether a, e, i, o, u or y is in it.
bool hasVowel(std::string_view word);

/// Small letters without accents: "Café" gives "cafe", "Æsop" gives "aesop". Other characters stay.
std::string folded(std::string_view utf8);

}  // namespace quorvane::word_data
