#include "hosts/icu/IcuDateFormatting.h"

#include <unicode/udat.h>

#include <array>
#include <memory>

namespace quorvane {
namespace {

constexpr Seconds kReferenceDate{978'307'200};  // since 1970

struct FormatCloser {
  void operator()(UDateFormat* format) const { udat_close(format); }
};
using Format = std::unique_ptr<UDateFormat, FormatCloser>;

UDateFormatStyle icuStyle(NSDateFormatterStyle style) {
  constexpr std::array kStyles{UDAT_NONE, UDAT_SHORT, UDAT_MEDIUM, UDAT_LONG, UDAT_FULL};
  return kStyles.at(static_cast<std::size_t>(style));
}

std::int32_t length(std::u16string_view text) { return static_cast<std::int32_t>(text.size()); }

// No pointer: ICU takes that of the system.
const char* nameOrNull(const std::string& name) { return name.empty() ? nullptr : name.c_str(); }

Format open(const NSDateFormatter& formatter, const std::string& localeName,
            const std::string& systemTimeZone) {
  const std::string& zone = formatter.timeZone.empty() ? systemTimeZone : formatter.timeZone;
  const std::u16string zoneID(zone.begin(), zone.end());
  const std::u16string& pattern = formatter.dateFormat;
  const bool styled = pattern.empty();
  UErrorCode error = U_ZERO_ERROR;
  return Format(udat_open(
      styled ? UDAT_NONE : UDAT_PATTERN, styled ? icuStyle(formatter.dateStyle) : UDAT_PATTERN,
      nameOrNull(localeName), zone.empty() ? nullptr : zoneID.c_str(), length(zoneID),
      styled ? nullptr : pattern.c_str(), length(pattern), &error));
}

}  // namespace

std::u16string IcuDateFormatting::stringFromDate(const NSDateFormatter& formatter, Seconds date) {
  const Format format = open(formatter, locale, systemTimeZone);
  if (!format) return {};
  std::array<char16_t, 256> text;
  UErrorCode error = U_ZERO_ERROR;
  const std::int32_t units =
      udat_format(format.get(), (date + kReferenceDate).count() * 1000, text.data(),
                  static_cast<std::int32_t>(text.size()), nullptr, &error);
  if (U_FAILURE(error)) return {};
  return {text.data(), static_cast<std::size_t>(units)};
}

}  // namespace quorvane
