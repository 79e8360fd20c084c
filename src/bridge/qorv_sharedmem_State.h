#pragma once
// What the input method and the main application keep in the tool record beside the sessions' own
// marks: versions, who is busy, whose menus are to be built anew, whose window it is.

#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {

/// States our version to the main application. 1 where the record is attached, else 0.
std::int32_t Init_Toolversion(Instance& instance);
/// 1 while an exchange with the main application is in progress.
std::int32_t IS_TOOL_BUSY(Instance& instance);
std::uint32_t Get_ToolCRecPtr_unusedx2(Instance& instance);
void Set_ToolCRecPtr_unusedx2(Instance& instance, std::uint32_t value);
void Set_ToolCRecPtr_unusedx1(Instance& instance, std::uint32_t value);
std::int32_t IS_MACHPORT_BUSY(Instance& instance);
void SET_MACHPORT_BUSY(Instance& instance, std::uint32_t value);
/// Nonzero where one of the menus of `mask` (16 bits) is to be rebuilt; the first form takes the
/// wish back.
std::int32_t Get_InputMethod_UpdateMenus(Instance& instance, std::uint32_t mask);
std::int32_t Get_IMK_updateMenus(Instance& instance, std::uint32_t mask);
std::int32_t Is_Quorvane_AppReady(Instance& instance);
/// Wakes the main application where it left the wish for it in the record.
void Wake_PHP_SharedMemProcess(Instance& instance);
/// Nonzero: a check is running. Otherwise, with `update`, the name of our process goes into the
/// record, or an empty one where it isn't a client's.
std::uint32_t CheckCurrentCheckStatus(Instance& instance, bool update);
/// Signature of the application whose text the correction window belongs to.
FourCharCode GetCurrentFrontApplication(const ToolRec& record);
/// 1 if this very process is the main application.
std::int32_t is_this_Quorvane(Instance& instance);

}  // namespace quorvane
