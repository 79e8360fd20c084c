#include "src/session/QBIM_IMK_CaretMoves.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/CarbonEvents.h"
#include "src/base/KeyBytes.h"
#include "src/session/QBIM_IMK_Interactive.h"
#include "src/session/QBIM_IMK_WindowCancel.h"

namespace quorvane {
namespace {

struct CaretMove {
  std::uint32_t modifiers;           ///< any of them; 0: with and without
  std::array<std::uint8_t, 6> keys;  ///< 0: none
};
// With one of these an arrow goes further than the next character, and the function key turns a
// delete code into forward delete.
constexpr std::uint32_t kFurther =
    cmdKey | optionKey | rightOptionKey | controlKey | rightControlKey | kEventKeyModifierFnMask;
constexpr std::array<CaretMove, 3> kCaretMoves{{
    {0, {kUpArrowKey, kDownArrowKey, kHomeKey, kEndKey, kPageUpKey, kPageDownKey}},
    {kFurther, {kLeftArrowKey, kRightArrowKey, kDeleteKey}},
    {cmdKey, {'x', 'X', 'v', 'V', 'z', 'Z'}},
}};

}  // namespace

bool leavesText(std::uint8_t keyByte, std::uint32_t modifiers) {
  if (keyByte == 0) return false;
  return std::any_of(kCaretMoves.begin(), kCaretMoves.end(), [&](const CaretMove& move) {
    const bool held = move.modifiers == 0 || (move.modifiers & modifiers) != 0;
    return held && std::find(move.keys.begin(), move.keys.end(), keyByte) != move.keys.end();
  });
}

void leaveText(Instance& instance, BIMSessionRec* session, std::uint8_t keyByte) {
  if (session == nullptr || !session->sessionText) return;
  BIMCancelWindowSession(instance);
  BIMMouseEditCancelSession(instance, session);
  CallInteractiveEventHandler(instance, session, keyByte, false);
}

}  // namespace quorvane
