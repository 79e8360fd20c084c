#pragma once
// What each command of the Input Menu does. Most act on the text of the client, which this process
// can't read: it has the client select and copy, waits for the clipboard to fill, and only then
// tells the main application, which takes the text from there. So a command is a chain of small
// ones, each of them run by the same entry.

#include "src/base/Instance.h"

namespace quorvane {

struct MenuDispatchState {
  std::uint8_t PencilandInputMenuFlag = 1;  ///< the Pencil Menu is wanted
};

/// Commands run from here on.
void Install_MenuDispatch(Instance& instance);

/// Turns switches of the application in front over, here and in the tool record.
void Set_CURRENTAPPFLAGSTATUS(Instance& instance, std::uint32_t mask);

}  // namespace quorvane
