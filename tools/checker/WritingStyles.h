#pragma once
// The writing styles of the Input Menu. A style leaves some kinds of corrections out; a switch of
// the user's that is off stays off in all of them. The one in force stands in the settings file
// `corrections`:
//
//     [Writing]
//     style=casual

#include <array>
#include <filesystem>
#include <string_view>

#include "platform/LogSink.h"
#include "tools/checker/CorrectionSwitches.h"

namespace quorvane::checker {

struct WritingStyle {
  std::string_view name;   ///< in the settings
  std::string_view title;  ///< in the menu
  CorrectionSwitches corrects{};
};
/// In the order of the menu; the first is in force where the settings say nothing.
inline constexpr std::array<WritingStyle, 5> kWritingStyles{{
    {"plain", "Plain"},
    {"casual", "Casual", {.smallI = false, .doubledWord = false}},
    {"technical", "Technical", {.smallI = false, .article = false, .doubledWord = false}},
    {"words",
     "Words Only",
     {.smallI = false, .couldOf = false, .article = false, .doubledWord = false}},
    {"typed",
     "As Typed",
     {.words = false, .smallI = false, .couldOf = false, .article = false, .doubledWord = false}},
}};

/// What both the user and the style want.
CorrectionSwitches inStyle(const WritingStyle& style, const CorrectionSwitches& users);

/// Place in the table; 0 where the settings name none that is known.
std::size_t readWritingStyle(const std::filesystem::path& configDirectory, quorvane::LogSink& log);
/// False where it can't be written.
bool keepWritingStyle(const std::filesystem::path& configDirectory, quorvane::LogSink& log,
                      std::size_t style);

}  // namespace quorvane::checker
