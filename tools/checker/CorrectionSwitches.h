#pragma once
// What the user wants to have corrected. The settings file `corrections` has a switch for each
// kind, on unless it says otherwise, but for what is made of typed characters, which is off:
//
//     [Corrections]
//     small-i=false

#include <array>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "platform/LogSink.h"

namespace quorvane::checker {

/// In the settings folder.
inline constexpr std::string_view kCorrectionsFile = "corrections";

struct CorrectionSwitches {
  bool words = true;
  bool smallI = true;
  bool couldOf = true;
  bool article = true;
  bool doubledWord = true;
  bool quotes = false;
  bool dashes = false;
  bool capitals = false;

  /// Field 38: 1 quotes, 2 dashes, 4 capitals of sentences.
  [[nodiscard]] std::uint32_t smartCharacters() const {
    return (quotes ? 1U : 0U) | (dashes ? 2U : 0U) | (capitals ? 4U : 0U);
  }
};

struct CorrectionSwitch {
  std::string_view name;
  bool CorrectionSwitches::*on;
  std::string_view meaning;
};
inline constexpr std::array<CorrectionSwitch, 8> kCorrectionSwitches{{
    {"words", &CorrectionSwitches::words, "words that are surely others"},
    {"small-i", &CorrectionSwitches::smallI, "i, where it is the pronoun"},
    {"could-of", &CorrectionSwitches::couldOf, "of in place of have, behind could and its like"},
    {"article", &CorrectionSwitches::article, "a and an by the sound that follows"},
    {"doubled-word", &CorrectionSwitches::doubledWord, "a word typed twice, in the popup alone"},
    {"quotes", &CorrectionSwitches::quotes, "typographic quotes while one types"},
    {"dashes", &CorrectionSwitches::dashes, "a dash of two hyphens while one types"},
    {"capitals", &CorrectionSwitches::capitals, "the first letters of sentences"},
}};

/// As they stand in the settings folder.
CorrectionSwitches readCorrectionSwitches(const std::filesystem::path& configDirectory,
                                          quorvane::LogSink& log);
/// False where it can't be written.
bool setCorrectionSwitch(const std::filesystem::path& configDirectory, quorvane::LogSink& log,
                         std::string_view name, bool on);

}  // namespace quorvane::checker
