#include "tools/checker/Dates.h"

#include <algorithm>
#include <array>

namespace quorvane::checker {

namespace {

constexpr std::uint32_t kUTCCommand = 17149;

struct DateForm {
  std::uint32_t command;
  std::u16string_view pattern;
};
// As the items of the menu show them.
constexpr std::array<DateForm, 6> kDateForms{{
    {17140, u"M/dd/yy"},
    {17141, u"EEEE, LLLL dd, yyyy"},
    {17142, u"EEE, LLL dd, yyyy"},
    {17145, u"M/dd/yy h:mm a"},
    {17146, u"EEEE, LLLL dd, yyyy h:mm a"},
    {17147, u"EEE, LLL dd, yyyy h:mm a"},
}};

std::u16string textInUTC(DateFormatting& dates, Seconds now) {
  const NSDateFormatter date{.timeZone = "UTC", .dateStyle = NSDateFormatterStyle::Short};
  const NSDateFormatter time{.timeZone = "UTC", .dateFormat = u"hh:mm:ss a"};
  return dates.stringFromDate(date, now) + u' ' + dates.stringFromDate(time, now) + u" UTC";
}

}  // namespace

std::u16string dateText(std::uint32_t command, DateFormatting& dates, Seconds now) {
  if (command == kUTCCommand) return textInUTC(dates, now);
  const auto* const form = std::ranges::find(kDateForms, command, &DateForm::command);
  if (form == kDateForms.end()) return {};
  return dates.stringFromDate({.dateFormat = std::u16string(form->pattern)}, now);
}

}  // namespace quorvane::checker
