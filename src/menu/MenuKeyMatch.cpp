#include "src/menu/MenuKeyMatch.h"

#include "src/bridge/QBIMLaunchServer.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuCommand.h"
#include "src/menu/MenuShortcuts.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kRightShiftKey = 0x2000;
/// One of these, or a function key: caps lock alone makes no shortcut.
constexpr std::uint32_t kShortcutModifiers = cmdKey | shiftKey | optionKey | controlKey |
                                             kRightShiftKey | rightOptionKey | rightControlKey |
                                             kEventKeyModifierFnMask;
static_assert(kShortcutModifiers == 0x2FB00);

// Behind the key where it may launch, and wait: keys typed meanwhile would overtake this one.
void runShortcut(Instance& instance, std::uint32_t command) {
  const auto run = [&instance, command] { Do_Menu_Tool_CommandID(instance, command); };
  if (GetQORVPROCESSRUNNING(instance, nullptr) != 0) return run();
  instance.platform().runLoop.performAfterDelay(run, Seconds{0});
}

}  // namespace

std::int32_t BIMCarbonPencilMenuKeyMatchEventHandler(Instance& instance, const void* /*ignored*/,
                                                     EventRef event, const void* /*ignoredToo*/) {
  const bool down = event->eventClass == kEventClassKeyboard && event->kind == kEventRawKeyDown;
  if (!down) return kCommandNotHandled;
  return PencilMenuKeyMatchEventHandler(instance, nullptr, event,
                                        instance.state<InputMenuState>().gMacPantherMenu);
}

std::int32_t PencilMenuKeyMatchEventHandler(Instance& instance, const void* /*ignored*/,
                                            EventRef event, const NSMenu* menu) {
  if (!event->kcod || !event->kmod || menu == nullptr) return kCommandNotHandled;
  const std::uint32_t keyCode = *event->kcod;
  const bool modified = (*event->kmod & kShortcutModifiers) != 0;
  if (!modified && !IsValidKeyboardShortcut(keyCode)) return kCommandNotHandled;
  const std::uint32_t command =
      NS_GetMenuCommandKeyAction_walkMenu(instance, keyCode, *event->kmod);
  if (command == 0) return kCommandNotHandled;
  runShortcut(instance, command);
  return 0;
}

}  // namespace quorvane
