#pragma once
// Units as types, where one number could be taken for another.

#include <chrono>
#include <compare>
#include <cstdint>
#include <ratio>

namespace quorvane {

using Seconds = std::chrono::duration<double>;
using Microseconds = std::chrono::duration<std::uint32_t, std::micro>;
/// As `TickCount` gives them.
using Ticks = std::chrono::duration<std::uint64_t, std::ratio<1, 60>>;

/// A number of characters of a document, as NSRange counts them. Bytes are plain numbers.
struct Utf16Units {
  std::uint32_t count = 0;

  friend auto operator<=>(const Utf16Units&, const Utf16Units&) = default;
};

}  // namespace quorvane
