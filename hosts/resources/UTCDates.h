#pragma once
// The File Manager's dates, and nanoseconds since the beginning of 1970.

#include <cstdint>

#include "platform/FileManager.h"

namespace quorvane::resources {

inline constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
inline constexpr std::int64_t kSecondsTo1970 = 2'082'844'800;  ///< from the beginning of 1904

/// Cut to 1/65536 of a second.
[[nodiscard]] constexpr UTCDateTime utcDateTimeOf(std::int64_t nanoseconds) {
  std::int64_t seconds = nanoseconds / kNanosecondsPerSecond;
  std::int64_t rest = nanoseconds % kNanosecondsPerSecond;
  if (rest < 0) {
    --seconds;
    rest += kNanosecondsPerSecond;
  }
  const auto since1904 = static_cast<std::uint64_t>(seconds + kSecondsTo1970);
  return {.highSeconds = static_cast<std::uint16_t>(since1904 >> 32),
          .lowSeconds = static_cast<std::uint32_t>(since1904),
          .fraction = static_cast<std::uint16_t>(rest * 65536 / kNanosecondsPerSecond)};
}

/// The first nanosecond whose date this is.
[[nodiscard]] constexpr std::int64_t nanosecondsOf(const UTCDateTime& date) {
  const std::int64_t seconds =
      (std::int64_t{date.highSeconds} << 32 | date.lowSeconds) - kSecondsTo1970;
  const std::int64_t rest = (std::int64_t{date.fraction} * kNanosecondsPerSecond + 65535) / 65536;
  return seconds * kNanosecondsPerSecond + rest;
}

}  // namespace quorvane::resources
