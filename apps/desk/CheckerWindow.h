#pragma once
// The main application's window over the document, as the shared record and the list of its popup
// tell of it.

#include <cstdint>
#include <optional>

#include "apps/RunningSystem.h"
#include "apps/desk/DeskModel.h"
#include "src/session/QBIM_IMK_WindowCancel.h"

namespace quorvane::desk {

struct CheckerWindow {
  std::uint32_t state = kNoWindow;  ///< any other number but these two: the document window
  std::optional<PopupView> popup;   ///< of an open one; empty also where its list can't be read
};

/// As it is now. No window where no main application runs. Where the popup opens or closes without
/// a key, the run loop still turns: the list's file comes and goes in the folder that the host
/// watches.
CheckerWindow lookAtCheckerWindow(RunningSystem& system);

}  // namespace quorvane::desk
