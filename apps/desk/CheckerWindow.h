#pragma once
// The main application's windows, as the shared record and its files tell of them.

#include <cstdint>
#include <optional>

#include "apps/RunningSystem.h"
#include "apps/desk/DeskModel.h"
#include "src/session/QBIM_IMK_WindowCancel.h"

namespace quorvane::desk {

struct CheckerWindow {
  std::uint32_t state = kNoWindow;         ///< any other number but these two: the document window
  std::optional<checker::WindowText> own;  ///< the one that takes the keys itself
  std::optional<PopupView> popup;  ///< of an open one; empty also where its list can't be read
};

/// As they are now. None where no main application runs. Where one opens, closes or changes without
/// a key, the run loop still turns: its file comes and goes in the folder that the host watches.
CheckerWindow lookAtCheckerWindow(RunningSystem& system);

}  // namespace quorvane::desk
