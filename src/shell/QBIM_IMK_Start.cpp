#include "src/shell/QBIM_IMK_Start.h"

#include "src/base/BigEndian.h"
#include "src/base/Log.h"
#include "src/base/OSVersion.h"
#include "src/bridge/PrivacyConsentController.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/keys/AsciiToKeyCode.h"
#include "src/menu/BIM_InitMenu.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuEventTimer.h"
#include "src/menu/PencilMenulet.h"
#include "src/menu/QBIMEndianCallBacks.h"
#include "src/menu/QBIM_AutoType_IMK.h"
#include "src/menu/QBIM_IMK_Params.h"
#include "src/menu/QBIM_SpellMenu_IMK.h"
#include "src/menu/QBIM_WritingStyle_IMK.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/session/QuorvaneInputController.h"
#include "src/shell/QBIMMessageReceive.h"

namespace quorvane {
namespace {

constexpr FourCharCode kStringList = "STR#"_4cc;
constexpr FourCharCode kGlyphs = "GLYP"_4cc;
constexpr std::int16_t kMenuStrings = 131;
constexpr std::int16_t kGlyphTable = 15873;

// String `index`, from 1, of a string list: a big-endian count of 16 bits, then Pascal strings. A
// list that ends too early, or a missing string, gives an empty one.
std::string listString(const Handle& list, std::size_t index) {
  if (!list || list->content.size() < 2) return {};
  const auto& bytes = list->content;
  const std::size_t count = bigEndianNumber<std::uint16_t>(bytes);
  if (index > count) return {};
  std::size_t at = 2;
  for (std::size_t skipped = 1; skipped < index && at < bytes.size(); ++skipped) {
    at += std::size_t{bytes[at]} + 1;
  }
  if (at >= bytes.size() || bytes.size() - at - 1 < bytes[at]) return {};
  const auto text = bytes.begin() + static_cast<std::ptrdiff_t>(at) + 1;
  return {text, text + bytes[at]};
}

void readMenuResources(Instance& instance) {
  ResourceManager& resources = instance.platform().resourceManager;
  auto& state = instance.state<StartState>();
  auto& menu = instance.state<InputMenuState>();
  const Handle strings = resources.Get1Resource(kStringList, kMenuStrings);
  menu.OpenMenuItemStr = listString(strings, 1);
  menu.QuitMenuItemStr = listString(strings, 2);
  if (state.gKeyGlyphHandle) return;
  state.gKeyGlyphHandle = resources.Get1Resource(kGlyphs, kGlyphTable);
  if (state.gKeyGlyphHandle) resources.DetachResource(state.gKeyGlyphHandle);
}

void makeFirstSessions(Instance& instance) {
  auto& sessions = instance.state<SessionState>();
  BIMSessionRec* head = CreateNewSessionHandle(instance, ClientID::None);
  if (head == nullptr) return;
  sessions.gActiveSession = head;
  sessions.gSessionHandleStart = head;
  instance.platform().textServicesManager.SetComponentInstanceStorage(
      nullptr, static_cast<std::uint32_t>(head->handle));
  head->next = CreateNewSessionHandle(instance, ClientID::None);
  if (head->next != nullptr) head->next->signature = 0;
}

}  // namespace

void Init_From_Delegate_applicationDidFinishLaunching(Instance& instance) {
  Set_Quorvane_Is_Active(instance, Init_GetQUORVANEPROCESS(instance));
  Init_Carbon_Menu(instance);
  Init_AutoType_Menu_Files(instance);
  Init_Spell_Menu_Files(instance);
  Init_WritingStyle_Menu(instance);
  Init_Controller(instance);
  auto& controller = instance.state<ControllerState>();
  if (controller.INITED_FLAG == 0) controller.INITED_FLAG = 1;
}

void Init_Carbon_Menu(Instance& instance) {
  auto& state = instance.state<StartState>();
  if (state.NoRecursion || state.inited) return;
  FlagGuard recursion(state.NoRecursion);
  state.inited = true;
  NSMenu* const carbonMenuRef = Get_MainMenu(instance);
  Set_MacPantherMenu(instance, carbonMenuRef);
  Init_Main_InputMenuItems(instance, carbonMenuRef);
  OpenIMComponent(instance);
  set_INITED_FLAG(instance, 1);
}

void Init_Controller(Instance& instance) {
  Log(instance, "OS_MAC_VERSION: ", Get_OS_MAC_VERSION(instance));
  OpenIMComponent(instance);
  set_INITED_FLAG(instance, 1);
}

void OpenIMComponent(Instance& instance) {
  BIMInitialize(instance, nullptr, 0);
  GetAndSetMenuParams3(instance);
  Init_Toolversion(instance);
  if (instance.state<SessionState>().gSessionHandleStart != nullptr) return;
  makeFirstSessions(instance);
}

std::int32_t BIMInitialize(Instance& instance, void* /*component*/, std::int32_t /*unused*/) {
  EnablePressAndHoldPalette();
  instance.state<SessionState>().gActiveSession = nullptr;
  instance.state<InputMenuState>().gPencilMenu = nullptr;
  Set_MacPantherMenu(instance, nullptr);
  InitAscii2KeyCodeTable();
  Init_BIM_Server(instance);
  Open_IMK_Resource(instance);
  Init_Toolversion(instance);
  Set_MacPantherMenu(instance, Get_MainMenu(instance));
  GetAndSetMenuParams3(instance);
  Install_MenuEventHandlers(instance);
  set_SETMENUFLAG(instance, 1);
  if (BIMInitializeMessageReceiving(instance) != 0) {
    Log(instance, "BIMInitializeMessageReceiving Create Port Error ");
  }
  return 0;
}

OSStatus Init_BIM_Server(Instance& instance) {
  const OSStatus status = BIMLaunchServer(instance);
  Get_Pencil_Menulet(instance);
  return status;
}

void InstallQorvLaunchTimer(Instance& instance) {
  Install_CoreEndianInstallFlippers(instance);
  Init_BIM_Server(instance);
}

void Open_IMK_Resource(Instance& instance) {
  ResourceManager& resources = instance.platform().resourceManager;
  const std::int32_t refNum =
      resources.CFBundleOpenBundleResourceMap(quorvaneInputBundleIdentifier);
  if (refNum == 0) return Log(instance, "CAUTION: refnum not open");
  if (refNum == -1) return Log(instance, "CAUTION: no refnum --  not open");
  const std::int32_t current = resources.CurResFile();
  resources.UseResFile(refNum);
  readMenuResources(instance);
  resources.UseResFile(current);
  resources.CFBundleCloseBundleResourceMap(quorvaneInputBundleIdentifier, refNum);
}

// Press-and-hold stays as the system has it.
void EnablePressAndHoldPalette() {}

void BIMTerminate(Instance& /*process*/) {}

void BIMInitialize_Pencil(Instance& /*process*/) {}

void BIMTerminate_Pencil(Instance& /*process*/) {}

}  // namespace quorvane
