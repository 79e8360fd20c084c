#include "src/menu/QBIM_IMK_Params.h"

#include <utility>

#include "src/base/Log.h"
#include "src/base/OSVersion.h"
#include "src/bridge/BIM_str.h"
#include "src/bridge/NSFileManager_search.h"
#include "src/bridge/Presence.h"
#include "src/bridge/ResFile.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/menu/MenuShortcuts.h"

namespace quorvane {
namespace {

constexpr std::uint16_t kFirstWithFrontmostApplication = 107;

/// True where `known` had another value.
template <class Value>
bool update(Value& known, Value now) {
  return std::exchange(known, now) != now;
}

bool frontApplicationChanged(Instance& instance) {
  auto& state = instance.state<ParamsState>();
  if (Get_OS_MAC_VERSION(instance) < kFirstWithFrontmostApplication) {
    return update(state.LASTGLOBALAPPLSIG, FRONTPROCESSSIGNATURE(instance));
  }
  const auto* const front = instance.platform().workspace.frontmostApplication();
  return update(state.LASTGLOBALAPPLSIG_app_pid, front == nullptr ? 0 : front->processIdentifier);
}

/// Outlives the file; null, logged, where the file hasn't got it.
Handle takeShortcuts(Instance& instance, FourCharCode type, std::string_view name) {
  ResourceManager& resources = instance.platform().resourceManager;
  Handle handle = resources.Get1Resource(type, kParamsID);
  if (handle != nullptr) {
    resources.DetachResource(handle);
  } else {
    Log(instance, "Resource Error: ", name);
  }
  return handle;
}

void loadPencilMenuFlag(Instance& instance) {
  const Handle flag = instance.platform().resourceManager.Get1Resource(kPencilMenuFlag, kParamsID);
  if (GetHandleSize(flag) > 0) {
    instance.state<ParamsState>().Global_PencilMenuFlag = flag->content[0];
  } else {
    Log(instance, "Resource Error: Pmen");
  }
}

void loadFile(Instance& instance) {
  const CurrentResFile file(instance, Open_Params_ResourceFile);
  if (!file) return;
  auto& state = instance.state<ParamsState>();
  GetAppInteractivedata(instance);
  state.QORVMENUKEYSXHAND =
      takeShortcuts(instance, QORVPARAMMENUKEYRESTYPE, "QORVPARAMMENUKEYRESTYPE");
  state.QORVMENUKEYSHAND =
      takeShortcuts(instance, QORVPARAMMENUCMMDKEYRESTYPE, "QORVPARAMMENUCMMDKEYRESTYPE");
  loadPencilMenuFlag(instance);
}

/// Without the shortcuts of every application those of this one don't count either.
void keepShortcuts(Instance& instance) {
  auto& state = instance.state<ParamsState>();
  if (state.QORVMENUKEYSHAND != nullptr) {
    std::uint32_t count = 0;
    const std::uint8_t* const records = GetMenuKeysPtr(instance, &count);
    instance.state<MenuShortcutsState>().APPQORVMENUKEYSHAND =
        CopyPtrToNewHandle(records, count * sizeof(Shortcut));
  }
  Disposblock(instance, std::exchange(state.QORVMENUKEYSHAND, nullptr));
  Disposblock(instance, std::exchange(state.QORVMENUKEYSXHAND, nullptr));
}

}  // namespace

std::int32_t Get_APPParamsLocation(Instance& instance) {
  FileManager& files = instance.platform().fileManager;
  auto& known = instance.state<ParamsState>().GrammarFolderRef;
  if (files.FSIsFSRefValid(known)) return 1;
  FSRef ref;
  if (files.FSFindFolder(kUserDomain, kApplicationSupportFolderType, ref) != noErr) return 0;
  for (const std::uint32_t kind : {kSearchQuorvaneFolder, kSearchParameterFile}) {
    if (Search_First(instance, kind, ref) == 0) return 0;
  }
  Dispose_iterate_Handle(instance);
  known = ref;
  Log(instance, "Got GrammarFolderRef");
  return 1;
}

std::int32_t Open_Params_ResourceFile(Instance& instance) {
  if (Get_APPParamsLocation(instance) == 0) return -1;
  return Do_FS_OpenResFile(instance, instance.state<ParamsState>().GrammarFolderRef, fsRdWrShPerm);
}

void GetAndSetMenuParams3(Instance& instance) {
  if (!frontApplicationChanged(instance)) return;
  auto& shortcuts = instance.state<MenuShortcutsState>().APPQORVMENUKEYSHAND;
  Disposblock(instance, std::exchange(shortcuts, nullptr));
  if (!ToolRec(instance)) Log(instance, "** ToolCRecPtr not open");
  loadFile(instance);
  keepShortcuts(instance);
  if (shortcuts != nullptr) NS_SetMenuCommandKeyAction_walkMenu(instance);
}

std::int16_t Write_Changed_Resource(Instance& instance, const Handle& handle) {
  ResourceManager& resources = instance.platform().resourceManager;
  resources.ChangedResource(handle);
  if (resources.ResError() == noErr) resources.WriteResource(handle);
  return static_cast<std::int16_t>(resources.ResError());
}

Handle getOrMakeResource(Instance& instance, FourCharCode type, std::int16_t id, std::size_t size) {
  ResourceManager& resources = instance.platform().resourceManager;
  if (Handle handle = resources.Get1Resource(type, id)) return handle;
  const Handle made = NewHandle(size);
  resources.AddResource(made, type, id, {});
  if (resources.ResError() == noErr) Write_Changed_Resource(instance, made);
  Disposblock(instance, made);
  return resources.Get1Resource(type, id);
}

}  // namespace quorvane
