#pragma once
// Waking a process that waits instead of looking: its announcement's times are set, and
// whoever watches the attributes of his own announcement hears of it. Nobody else does.

#include <filesystem>
#include <functional>
#include <memory>

#include "hosts/desktop/Descriptor.h"
#include "hosts/desktop/RunLoop.h"

namespace quorvane::desktop {

/// Of the process that has announced itself by this file; nothing happens where there is none.
void wakeUp(const std::filesystem::path& announcement);

class WakeUps {
 public:
  /// Calls `handler` at each; at none where the file can't be watched.
  WakeUps(RunLoop& runLoop, const std::filesystem::path& announcement,
          std::function<void()> handler);

 private:
  Descriptor events_;
  std::unique_ptr<Registration> watch_;
};

}  // namespace quorvane::desktop
