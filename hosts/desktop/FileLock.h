#pragma once

#include <chrono>

namespace quorvane::desktop {

/// An flock on an open file or folder, which lasts as long as that is open. False where another
/// process still holds one when so much time has passed, or it can't be had at all.
bool lockInTime(int file, std::chrono::milliseconds patience);

}  // namespace quorvane::desktop
