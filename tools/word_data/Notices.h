#pragma once
// What must be said of the sources wherever the data goes.

#include <filesystem>
#include <string>

namespace quorvane::word_data {

struct NoticePlaces {
  std::filesystem::path tables;         ///< our own words, in notices/
  std::filesystem::path documentation;  ///< the folder of the Debian packages' copyright files
  std::filesystem::path packages;       ///< node_modules
};

struct PackagesUsed {
  bool subtitles = false;
  bool books = false;
  bool pronunciations = false;
};

/// The notices of all sources that were used. Throws SourceError.
std::string notices(const NoticePlaces& places, const PackagesUsed& used);

}  // namespace quorvane::word_data
