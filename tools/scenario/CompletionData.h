#pragma once
// The data files of word completion, put together from what a scenario says about single words.

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/memory/MemoryHost.h"

namespace quorvane::scenario {

struct WordEntry {
  std::int64_t frequency = 0;
  std::vector<std::string> translation;
  std::string ipa;
};

/// Texts are UTF-8. The files are as they were until written.
struct CompletionData {
  std::vector<std::string> list;                             ///< the words of the list
  std::map<std::string, WordEntry> entries;                  ///< what the table says of words
  std::map<std::string, std::vector<std::string>> sounding;  ///< sound code, its words
  std::map<std::string, std::string> expansions;             ///< the user's own

  void writeWords(memory::MemoryHost& host) const;
  /// With a script whose code is a word's first letter and its length.
  void writeSoundCodes(memory::MemoryHost& host) const;
  void writeExpansions(memory::MemoryHost& host) const;
};

/// The path of the user's own file.
std::string userFile(memory::MemoryHost& host);

/// The pieces between the separators; none for an empty text.
template <class Unit>
std::vector<std::basic_string<Unit>> split(const std::basic_string<Unit>& text, Unit separator) {
  std::vector<std::basic_string<Unit>> pieces;
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t end = std::min(text.find(separator, from), text.size());
    pieces.push_back(text.substr(from, end - from));
    from = end + 1;
  }
  return pieces;
}

}  // namespace quorvane::scenario
