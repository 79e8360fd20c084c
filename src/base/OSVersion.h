#pragma once
// The system's version as one number.

#include <cstdint>

#include "src/base/Instance.h"

namespace quorvane {

struct OSVersionState {
  std::uint16_t OS_MAC_VERSION = 0;  ///< 0 until first asked
};

/// 106 to 109, then 1010 to 1015. Worked out once from the AppKit version.
std::uint16_t Get_OS_MAC_VERSION(Instance& instance);

}  // namespace quorvane
