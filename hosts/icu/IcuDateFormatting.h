#pragma once
// Dates by ICU, shared by every host.

#include "platform/DateFormatting.h"

namespace quorvane {

class IcuDateFormatting final : public DateFormatting {
 public:
  /// Empty where the date can't be written so.
  std::u16string stringFromDate(const NSDateFormatter& formatter, Seconds date) override;

  // Empty: those of the system.
  std::string locale;
  std::string systemTimeZone;
};

}  // namespace quorvane
