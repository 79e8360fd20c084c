#pragma once
// Words as the stand-in would meet them, out of texts.

#include <filesystem>
#include <map>
#include <string>
#include <tuple>

#include "tools/corrections/Decision.h"

namespace quorvane::corrections {

struct TextWord {
  std::string word;  ///< in small letters
  Writing writing = Writing::Small;
  bool operator<(const TextWord& other) const {
    return std::tie(word, writing) < std::tie(other.word, other.writing);
  }
};

struct Reading {
  std::size_t words = 0;                    ///< all of them
  std::map<TextWord, std::size_t> checked;  ///< those whose spelling is the stand-in's concern
};

/// Throws std::runtime_error where it can't be read.
std::string fileText(const std::filesystem::path& file);

/// As if somebody had typed `text`.
Reading readWords(std::string_view text);

}  // namespace quorvane::corrections
