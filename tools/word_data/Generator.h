#pragma once
// The whole way from the sources to the folder of word data.

#include <cstddef>
#include <filesystem>

#include "platform/ScriptHost.h"

namespace quorvane::word_data {

struct Places {
  std::filesystem::path scowl = "/usr/share/dict/scowl";
  std::filesystem::path wordnet = "/usr/share/wordnet";
  std::filesystem::path documentation = "/usr/share/doc";
  std::filesystem::path packages;  ///< node_modules; what is missing of it is done without
  std::filesystem::path tables = "data";
  std::filesystem::path output = "build/data";
};

/// What was made, and of what.
struct Report {
  bool subtitles = false;  ///< each says whether its package was there
  bool books = false;
  bool pronunciations = false;
  std::size_t words = 0;
  std::size_t attested = 0;
  std::size_t defined = 0;
  std::size_t pronounced = 0;
  std::size_t codes = 0;
  std::size_t largestGroup = 0;

  bool isComplete() const { return subtitles && books && pronunciations; }
};

/// Throws SourceError for a fault in a source, another std::exception where the folder can't be
/// written. The old folder stays then.
Report generate(const Places& places, ScriptHost& scripts);

}  // namespace quorvane::word_data
