#pragma once
// How long anything may wait while somebody's key stands still for it.

#include <functional>

#include "hosts/desktop/RunLoop.h"

namespace quorvane::desktop {

struct WithinKey {
  std::function<bool()> isWithin;  ///< a key stands still until the call returns; unset: none does
  Seconds longest{2};

  /// When a wait that begins now must be over for the key's sake.
  [[nodiscard]] RunLoop::Deadline deadline() const {
    const bool stands = isWithin && isWithin();
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::ceil<RunLoop::Milliseconds>(longest);
    return stands ? RunLoop::Deadline(end) : RunLoop::Deadline::max();
  }
};

}  // namespace quorvane::desktop
