#pragma once
// NSDateFormatter and NSTimeZone: a date as text in the user's language.

#include <string>

#include "platform/Units.h"

namespace quorvane {

enum class NSDateFormatterStyle { None = 0, Short = 1, Medium = 2, Long = 3, Full = 4 };

struct NSDateFormatter {
  std::string timeZone{};  ///< timeZoneWithAbbreviation; empty: the systemTimeZone
  NSDateFormatterStyle dateStyle = NSDateFormatterStyle::None;
  /// By the Unicode date field symbols; where there is one, the style counts for nothing.
  std::u16string dateFormat{};
};

class DateFormatting {
 public:
  virtual ~DateFormatting() = default;

  /// `date` as Clock::CFAbsoluteTimeGetCurrent gives it.
  virtual std::u16string stringFromDate(const NSDateFormatter& formatter, Seconds date) = 0;
};

}  // namespace quorvane
