#include "hosts/keyboard/StandardTables.h"

#include "hosts/keyboard/SpecialKeys.h"
#include "platform/CarbonEvents.h"

namespace quorvane::keyboard {
namespace {

constexpr std::uint32_t kRightShiftKey = 0x2000;

StandardTable tableFor(std::uint32_t modifiers) {
  const bool shift = (modifiers & (shiftKey | kRightShiftKey)) != 0;
  const bool caps = (modifiers & alphaLock) != 0;
  const bool held = (modifiers & (cmdKey | controlKey | rightControlKey)) != 0;
  const bool option = (modifiers & (optionKey | rightOptionKey)) != 0 && !held;
  if (shift) return option ? kOptionShift : kShift;
  if (caps) return option ? kCapsOption : kCaps;
  return option ? kOption : kPlain;
}

}  // namespace

LayoutTables standardTables() {
  LayoutTables made;
  made.tables.resize(kStandardTables);
  for (auto& table : made.tables) {
    for (const SpecialKey& key : kSpecialKeys) table[key.keyCode].text = key.code;
  }
  for (std::uint32_t state = 0; state < kModifierStates; ++state) {
    made.tableOf[state] = tableFor(state << 8);
  }
  return made;
}

}  // namespace quorvane::keyboard
