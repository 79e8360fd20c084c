#pragma once
// Which keys are for the main application's window. The window belongs to the other process, while
// the keys arrive here: field 26 takes each key over, and a tool command tells of it.
//
//   field 31   0 no window    1 popup with numbered suggestions    any other: document window
//   field 26   a key given over; what it holds afterwards is the answer, whose meaning each caller
//              knows

#include "src/base/Instance.h"

namespace quorvane {

/// Around commands during which the run loop may turn: no second one begins meanwhile.
struct WindowKeysState {
  std::uint32_t NORECURSION = 0;  ///< command 101
  std::uint32_t NXRECURSION = 0;  ///< command 102
};

bool HandleKeys_Popup_and_Window(Instance& instance, std::uint32_t windowState,
                                 std::uint32_t modifiers, std::uint8_t keyByte,
                                 std::uint32_t controlDigits);
/// Asks about the key in field 26. 1: consumed.
std::int32_t Get_Control_KeyPress(Instance& instance);
/// A change of modifiers. 1: a document window took it.
std::int32_t Check_InteractiveWindowKeys2(Instance& instance, std::uint32_t mask);
/// 1: a digit with command or option, for the document window. The second form is told the
/// modifiers instead of asking for them.
std::int32_t Check_IntractiveWindowKeys3(Instance& instance, std::uint8_t keyByte);
std::int32_t Check_IntractiveWindowKeys(Instance& instance, std::uint8_t keyByte,
                                        std::uint32_t modifiers);

}  // namespace quorvane
