#pragma once

#include <cstdint>

namespace quorvane {

/// The offset of the shared-memory keys of the run with this process id; no two overlap.
constexpr std::uint32_t keyOffsetOf(std::int32_t pid) {
  return 0x10000000U + (static_cast<std::uint32_t>(pid) * 32U);
}

}  // namespace quorvane
