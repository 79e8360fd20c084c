#pragma once
// Alias records as this system writes them: where a file or a folder lies.
//
//   0          4     6                    size
//   user type  size  path, UTF-8
//
// Both numbers are big-endian; the size is that of the whole record.

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "src/base/BigEndian.h"

namespace quorvane::resources {

inline constexpr std::size_t kAliasHeadSize = 6;
inline constexpr std::size_t kLongestAliasPath = 4096;

inline std::vector<std::uint8_t> aliasRecord(std::string_view path) {
  std::vector<std::uint8_t> record(kAliasHeadSize);
  putBigEndian(record, 4, static_cast<std::uint16_t>(kAliasHeadSize + path.size()));
  record.insert(record.end(), path.begin(), path.end());
  return record;
}

/// None where the bytes aren't exactly such a record.
inline std::optional<std::string> pathOfAlias(std::span<const std::uint8_t> record) {
  if (record.size() <= kAliasHeadSize || record.size() > kAliasHeadSize + kLongestAliasPath) {
    return {};
  }
  if (bigEndianNumber<std::uint16_t>(record.subspan(4)) != record.size()) return {};
  std::string path(record.begin() + kAliasHeadSize, record.end());
  if (path.find('\0') != std::string::npos) return {};
  return path;
}

}  // namespace quorvane::resources
