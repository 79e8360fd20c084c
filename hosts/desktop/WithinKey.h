#pragma once
// How long anything may wait while somebody's key stands still for it.

#include <functional>

#include "hosts/desktop/RunLoop.h"

namespace quorvane::desktop {

/// Whether a key stands still until the call returns; unset: none does.
using IsWithinKey = std::function<bool()>;

/// When a wait that begins now must be over for the key's sake.
inline RunLoop::Deadline endWithinKey(const IsWithinKey& isWithinKey) {
  constexpr std::chrono::seconds kLongest{2};
  const bool isWithin = isWithinKey && isWithinKey();
  return isWithin ? std::chrono::steady_clock::now() + kLongest : RunLoop::Deadline::max();
}

}  // namespace quorvane::desktop
