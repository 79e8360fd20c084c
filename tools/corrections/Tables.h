#pragma once
// What is known by heart: the tables of data/corrections, compiled in.

#include <string_view>

namespace quorvane::corrections {

/// See `EditWeights`.
extern const std::string_view kEditWeightsTable;
/// Lines `word frequency`, as in the word data, # before a remark: what the word data hasn't or
/// finds rarer. Words of programmers and their manuals.
extern const std::string_view kTechnicalWordsTable;
/// Likewise; each has an apostrophe.
extern const std::string_view kContractionsTable;

}  // namespace quorvane::corrections
