#pragma once
// The start of the core: the delegate triggers it once the nib has been loaded.

#include <string>

#include "src/base/Process.h"

namespace quorvane {

struct StartState {
  bool NoRecursion = false;
  bool inited = false;
  std::string OpenMenuItemStr;  ///< Mac OS Roman bytes of the Pascal string
  std::string QuitMenuItemStr;
  Handle gKeyGlyphHandle;
};

void Init_From_Delegate_applicationDidFinishLaunching(Process& process);
/// Once only.
void Init_Carbon_Menu(Process& process);
void Init_Controller(Process& process);
/// Runs twice in a start; the first run makes the two sessions, the second leaves none active.
void OpenIMComponent(Process& process);
/// 0, whatever goes wrong inside.
std::int32_t BIMInitialize(Process& process, void* instance, std::int32_t unused);
/// Reads what the bundle's resource map holds for the menu.
void Open_IMK_Resource(Process& process);
void EnablePressAndHoldPalette();
// Empty: nothing is cleaned up, and the Pencil Menu is a process of its own.
void BIMTerminate(Process& process);
void BIMInitialize_Pencil(Process& process);
void BIMTerminate_Pencil(Process& process);

}  // namespace quorvane
