#pragma once
// What the windows say that hold nothing but a text.

#include <string_view>

namespace quorvane::checker {

extern const std::u16string_view kWritingRules;
extern const std::u16string_view kPreferences;
extern const std::u16string_view kAbout;
extern const std::u16string_view kHelp;
extern const std::u16string_view kNothingCopied;
extern const std::u16string_view kNoText;
extern const std::u16string_view kNotPasted;
extern const std::u16string_view kNoDictionary;

}  // namespace quorvane::checker
