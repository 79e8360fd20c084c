#pragma once
// Where in a text something is wrong.

#include <cstdint>
#include <string_view>

namespace quorvane {

struct JSONPlace {
  std::uint64_t line = 0;    ///< from 1
  std::uint64_t column = 0;  ///< from 1, in bytes
};

JSONPlace placeInText(std::string_view text, std::size_t at);

/// The first byte that isn't UTF-8, else the first control character inside a string, else the
/// quotation mark that no other one closes, else the last character: what simdjson finds without
/// saying where.
std::size_t placeOfBadText(std::string_view text);

}  // namespace quorvane
