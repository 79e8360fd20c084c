#pragma once
// Sizes of the parts of a resource fork's map, in bytes.

#include <cstddef>

namespace quorvane::resources {

inline constexpr std::size_t kMapHead = 28;
inline constexpr std::size_t kTypeEntry = 8;
inline constexpr std::size_t kReference = 12;

}  // namespace quorvane::resources
