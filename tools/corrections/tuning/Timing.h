#pragma once
// What the decision costs.

#include <functional>
#include <string>
#include <vector>

#include "tools/corrections/Decision.h"

namespace quorvane::corrections {

/// Prints how long `judge` takes for a word, each word once, and how much of the index is in memory
/// afterwards.
void tellCosts(const std::vector<std::string>& words,
               const std::function<void(const std::string&)>& judge);

/// Adds as many words as `count`: of random bytes and letters, and mixtures of those that are
/// there.
void addRandomWords(std::vector<std::string>& words, std::size_t count);

}  // namespace quorvane::corrections
