#include "src/menu/qorvTextTools.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "src/base/Text.h"
#include "src/bridge/BIM_str.h"
#include "src/menu/InputMenu.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kUTCStyle = 7;
constexpr std::int32_t kUTCBufferSize = 64;

struct DateItem {
  std::uint32_t style;
  std::uint32_t commandID;
  std::u16string_view format;
};
constexpr std::array<DateItem, 7> kDateItems{{
    {1, "DaTs"_4cc, u"M/dd/yy"},
    {2, "DaTl"_4cc, u"EEEE, LLLL dd, yyyy"},
    {3, "DaTa"_4cc, u"EEE, LLL dd, yyyy"},
    {4, "DTTs"_4cc, u"M/dd/yy h:mm a"},
    {5, "DTTl"_4cc, u"EEEE, LLLL dd, yyyy h:mm a"},
    {6, "DTTa"_4cc, u"EEE, LLL dd, yyyy h:mm a"},
    {kUTCStyle, "DTTu"_4cc, {}},
}};

std::u16string now(Instance& instance, const NSDateFormatter& formatter) {
  Platform& platform = instance.platform();
  return platform.dateFormatting.stringFromDate(formatter,
                                                platform.clock.CFAbsoluteTimeGetCurrent());
}

std::u16string dateText(Instance& instance, std::uint32_t style) {
  NSDateFormatter formatter{.dateStyle = NSDateFormatterStyle::Long};
  const auto* item = std::ranges::find(kDateItems, style, &DateItem::style);
  if (item != kDateItems.end()) formatter.dateFormat = item->format;
  return now(instance, formatter);
}

}  // namespace

void NS_Set_Date_Time_Menu(Instance& instance) {
  for (const DateItem& item : kDateItems) {
    Get_Date_NSString_Menu(instance, item.style, item.commandID);
  }
}

void Get_Date_NSString_Menu(Instance& instance, std::uint32_t style, std::uint32_t commandID) {
  NSMenu_SetMenuItem_NSstring(instance, commandID,
                              style == kUTCStyle ? GetUTCDateString(instance, 0, 0, nullptr, 0)
                                                 : dateText(instance, style));
}

// As many bytes as the text has characters: in a language whose letters take more it is cut.
void Get_Date_String(Instance& instance, std::uint32_t style, std::uint8_t* buffer) {
  const std::u16string text = dateText(instance, style);
  const std::string bytes = toUtf8(text);
  const std::size_t count = std::min({text.size() + 1, bytes.size(), std::size_t{255}});
  std::copy_n(bytes.begin(), count, buffer);
  buffer[count] = 0;
  CtoPstr(buffer);
}

std::u16string GetUTCDateString(Instance& instance, std::uint64_t /*seconds*/,
                                std::uint32_t /*option*/, std::uint8_t* buffer,
                                std::uint32_t /*extra*/) {
  const std::u16string date =
      now(instance, {.timeZone = "UTC", .dateStyle = NSDateFormatterStyle::Short});
  const std::u16string time = now(instance, {.timeZone = "UTC", .dateFormat = u"hh:mm:ss a"});
  std::u16string text = date + u' ' + time + u" UTC";
  const std::string bytes = toUtf8(text);
  if (buffer != nullptr) {
    strngcpy(buffer, reinterpret_cast<const std::uint8_t*>(bytes.c_str()), kUTCBufferSize);
  }
  return text;
}

}  // namespace quorvane
