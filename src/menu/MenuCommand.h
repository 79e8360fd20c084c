#pragma once
// Running a command of the Input Menu from wherever it comes: the menu, a typed shortcut, a
// message, the end of a wait. What a command does lies in the shell, above everything that it asks;
// this is the one call that goes up there.

#include "src/base/Instance.h"

namespace quorvane {

inline constexpr std::int32_t kCommandNotHandled = -9874;

struct MenuCommandState {
  /// Set by the shell at the start; null before.
  std::int32_t (*run)(Instance& instance, std::uint32_t commandID) = nullptr;
};

/// 0; kCommandNotHandled for an id that isn't known.
std::int32_t Do_Menu_Tool_CommandID(Instance& instance, std::uint32_t commandID);
/// The result is cut to 16 bits.
std::int16_t do_Qorv_Do_Menu_Tool_CommandID(Instance& instance, std::uint32_t commandID);
/// The same behind the preparation of the keys that the command may press.
std::int16_t do_QorvMain_Do_Menu_Tool_CommandID(Instance& instance, std::uint32_t commandID);

/// The generic action: the title says which item it is, so that of two with the same title the
/// first one acts.
void SubMenuActions(Instance& instance, const IMKCommandDictionary& sender);

}  // namespace quorvane
