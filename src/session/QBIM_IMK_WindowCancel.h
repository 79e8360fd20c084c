#pragma once
// The ways in which the main application's window is closed, shown or hidden from here. Without the
// record there is no window.

#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {

/// As the fields stand: nobody's window is that of a front application without a signature.
bool isWindowOfFront(Process& process, const ToolRec& record);
/// True: a window is up, whether or not it was cancelled from here.
bool BIMCancelWindowSession(Process& process);
/// Whatever is in front. Field 31's low byte.
std::uint32_t BIMAlwaysCancelWindowSession(Process& process);
void BIMCancelandClose_WindowSession(Process& process);
/// The popup by its own command, any other window by that of the document window.
void Cancel_Iteractive_Window(Process& process);
/// Ends a suspension; shows or hides the window of the front application. 1: there is one.
std::int32_t CHECK_InteractiveWindow_Cancel(Process& process);
std::uint32_t isToolRec_DocWindowOpen(Process& process);

}  // namespace quorvane
