#pragma once
// How long anything may wait while somebody's key stands still for it.

#include <functional>

#include "hosts/desktop/RunLoop.h"

namespace quorvane::desktop {

struct WithinKey {
  std::function<bool()> isWithin;  ///< a key stands still until the call returns; unset: none does
  std::chrono::milliseconds longest{2000};

  /// When a wait that begins now must be over for the key's sake.
  [[nodiscard]] RunLoop::Deadline deadline() const {
    const bool stands = isWithin && isWithin();
    return stands ? std::chrono::steady_clock::now() + longest : RunLoop::Deadline::max();
  }
};

}  // namespace quorvane::desktop
