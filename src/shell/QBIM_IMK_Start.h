#pragma once
// The start of the core: the delegate triggers it once the nib has been loaded.

#include "src/base/Instance.h"

namespace quorvane {

struct StartState {
  bool NoRecursion = false;
  bool inited = false;
  Handle gKeyGlyphHandle;
};

void Init_From_Delegate_applicationDidFinishLaunching(Instance& instance);
/// Once only.
void Init_Carbon_Menu(Instance& instance);
void Init_Controller(Instance& instance);
/// Runs twice in a start; the first run makes the two sessions, the second leaves none active.
void OpenIMComponent(Instance& instance);
/// 0, whatever goes wrong inside.
std::int32_t BIMInitialize(Instance& instance, void* component, std::int32_t unused);
/// Starts the siblings that are to run and don't. May be repeated.
OSStatus Init_BIM_Server(Instance& instance);
/// The last step of the start. Despite its name there is no timer in it.
void InstallQorvLaunchTimer(Instance& instance);
/// Reads what the bundle's resource map holds for the menu.
void Open_IMK_Resource(Instance& instance);
void EnablePressAndHoldPalette();
// Empty: nothing is cleaned up, and the Pencil Menu is a process of its own.
void BIMTerminate(Instance& instance);
void BIMInitialize_Pencil(Instance& instance);
void BIMTerminate_Pencil(Instance& instance);

}  // namespace quorvane
