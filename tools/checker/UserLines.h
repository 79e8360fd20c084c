#pragma once
// Files of the user's, line by line.

#include <cstddef>
#include <functional>
#include <string_view>

namespace quorvane::checker {

inline constexpr std::size_t kMostUserLines = 262'144;

/// Calls `take` with each line that isn't empty, without its end; a byte order mark is no part of
/// the first. How many lines it has refused, those beyond the most included.
std::size_t forEachLine(std::string_view file, const std::function<bool(std::string_view)>& take);

}  // namespace quorvane::checker
