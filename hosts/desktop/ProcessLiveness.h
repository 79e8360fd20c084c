#pragma once
// Whether a process still runs. One that has ended but wasn't waited for doesn't.

#include <cstdint>

#include "hosts/desktop/Descriptor.h"

namespace quorvane::desktop {

/// A descriptor that becomes readable when the process ends. Invalid where no such process of this
/// user runs.
Descriptor openProcess(std::int32_t pid);

inline bool isRunning(std::int32_t pid) { return openProcess(pid).valid(); }

}  // namespace quorvane::desktop
