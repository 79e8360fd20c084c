#pragma once
// What the user wants to have corrected. The settings file `corrections` has a switch for each
// kind, on unless it says otherwise:
//
//     [Corrections]
//     small-i=false

#include <array>
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
};

struct CorrectionSwitch {
  std::string_view name;
  bool CorrectionSwitches::*on;
  std::string_view meaning;
};
inline constexpr std::array<CorrectionSwitch, 5> kCorrectionSwitches{{
    {"words", &CorrectionSwitches::words, "words that are surely others"},
    {"small-i", &CorrectionSwitches::smallI, "i, where it is the pronoun"},
    {"could-of", &CorrectionSwitches::couldOf, "of in place of have, behind could and its like"},
    {"article", &CorrectionSwitches::article, "a and an by the sound that follows"},
    {"doubled-word", &CorrectionSwitches::doubledWord, "a word typed twice, in the popup alone"},
}};

/// As they stand in the settings folder.
CorrectionSwitches readCorrectionSwitches(const std::filesystem::path& configDirectory,
                                          quorvane::LogSink& log);
/// False where it can't be written.
bool setCorrectionSwitch(const std::filesystem::path& configDirectory, quorvane::LogSink& log,
                         std::string_view name, bool on);

}  // namespace quorvane::checker
