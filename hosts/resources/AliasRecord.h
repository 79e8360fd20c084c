#pragma once
// An alias record as this system writes it: its user's type (4) and its size (2), big-endian, then
// the path that it leads to, in UTF-8.

#include <string>

#include "hosts/resources/CheckedBytes.h"

namespace quorvane::resources {

inline constexpr std::size_t kLongestAliasPath = 4095;

/// None where the path is empty, too long, or has a zero in it.
std::optional<Bytes> aliasTo(std::string_view path);
/// None where the record is damaged. Bytes behind its size count for nothing.
std::optional<std::string> pathOfAlias(ByteView record);

}  // namespace quorvane::resources
