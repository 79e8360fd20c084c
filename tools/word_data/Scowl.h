#pragma once
// The candidates: the spell checker oriented word lists. A list's level says how far down in
// commonness its words lie, 10 to 80.

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quorvane::word_data {

/// The lowest level at which a word is in a list of each kind.
struct Levels {
  static constexpr int Absent = 1000;
  int word = Absent;
  int name = Absent;  ///< names of people and places, and other words written with a capital
  int abbreviation = Absent;
};

using Candidates = std::unordered_map<std::string, Levels>;

/// All lists of the folder that are in use, accents folded, plain words only, without Roman
/// numerals that are no words. Throws SourceError.
Candidates readScowl(const std::filesystem::path& folder);

/// Which levels a list counts for: its file's name is "category-kind.level". Null where the list is
/// of no use to us.
int Levels::*kindOfList(std::string_view fileName, int& level);

}  // namespace quorvane::word_data
