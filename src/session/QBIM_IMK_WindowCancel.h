#pragma once
// The ways in which the main application's window is closed, shown or hidden from here. Without the
// record there is no window.

#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {

/// As the fields stand: nobody's window is that of a front application without a signature.
bool isWindowOfFront(Instance& instance, const ToolRec& record);
/// True: a window is up, whether or not it was cancelled from here.
bool BIMCancelWindowSession(Instance& instance);
/// Whatever is in front. Field 31's low byte.
std::uint32_t BIMAlwaysCancelWindowSession(Instance& instance);
void BIMCancelandClose_WindowSession(Instance& instance);
/// The popup by its own command, any other window by that of the document window.
void Cancel_Iteractive_Window(Instance& instance);
/// Ends a suspension; shows or hides the window of the front application. 1: there is one.
std::int32_t CHECK_InteractiveWindow_Cancel(Instance& instance);
std::uint32_t isToolRec_DocWindowOpen(Instance& instance);

}  // namespace quorvane
