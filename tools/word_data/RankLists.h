#pragma once
// Words by how often they are used: in subtitles and in books. A list has the order of its words
// and no counts.

#include <filesystem>
#include <string>
#include <unordered_map>

namespace quorvane::word_data {

/// 1 is the most common word. Empty where the list's package isn't installed.
using Ranks = std::unordered_map<std::string, int>;

struct RankLists {
  Ranks subtitles;
  Ranks books;
};

/// `packages` is a node_modules folder, which may be missing. Throws SourceError for a list that is
/// there and has another form than expected.
RankLists readRankLists(const std::filesystem::path& packages);

/// A JSON array of words. Ranks count every entry; only plain words are kept.
Ranks readJsonRanks(const std::filesystem::path& path);
/// A script whose module is one string of capital words, one a line.
Ranks readScriptRanks(const std::filesystem::path& path);

}  // namespace quorvane::word_data
