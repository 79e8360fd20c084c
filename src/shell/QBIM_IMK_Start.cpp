#include "src/shell/QBIM_IMK_Start.h"

#include "src/base/BigEndian.h"
#include "src/base/Log.h"
#include "src/base/OSVersion.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/keys/AsciiToKeyCode.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/session/QuorvaneInputController.h"
#include "src/shell/QBIMMessageReceive.h"

namespace quorvane {
namespace {

constexpr std::string_view kBundle = "com.tallowmere.inputmethod.Quorvane";
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

void readMenuResources(Process& process) {
  ResourceManager& resources = process.platform().resourceManager;
  auto& state = process.state<StartState>();
  const Handle strings = resources.Get1Resource(kStringList, kMenuStrings);
  state.OpenMenuItemStr = listString(strings, 1);
  state.QuitMenuItemStr = listString(strings, 2);
  if (state.gKeyGlyphHandle) return;
  state.gKeyGlyphHandle = resources.Get1Resource(kGlyphs, kGlyphTable);
  if (state.gKeyGlyphHandle) resources.DetachResource(state.gKeyGlyphHandle);
}

void makeFirstSessions(Process& process) {
  auto& sessions = process.state<SessionState>();
  BIMSessionRec* head = CreateNewSessionHandle(process, 0);
  if (head == nullptr) return;
  sessions.gActiveSession = head;
  sessions.gSessionHandleStart = head;
  process.platform().textServicesManager.SetComponentInstanceStorage(nullptr, head->handle);
  head->next = CreateNewSessionHandle(process, 0);
  if (head->next != nullptr) head->next->signature = 0;
}

}  // namespace

void Init_From_Delegate_applicationDidFinishLaunching(Process& process) {
  Set_Quorvane_Is_Active(process, Init_GetQUORVANEPROCESS(process));
  Init_Carbon_Menu(process);
  Init_Controller(process);
  auto& controller = process.state<ControllerState>();
  if (controller.INITED_FLAG == 0) controller.INITED_FLAG = 1;
}

void Init_Carbon_Menu(Process& process) {
  auto& state = process.state<StartState>();
  if (state.NoRecursion || state.inited) return;
  FlagGuard recursion(state.NoRecursion);
  state.inited = true;
  OpenIMComponent(process);
  set_INITED_FLAG(process, 1);
}

void Init_Controller(Process& process) {
  Log(process, "OS_MAC_VERSION: ", Get_OS_MAC_VERSION(process));
  OpenIMComponent(process);
  set_INITED_FLAG(process, 1);
}

void OpenIMComponent(Process& process) {
  BIMInitialize(process, nullptr, 0);
  Init_Toolversion(process);
  if (process.state<SessionState>().gSessionHandleStart != nullptr) return;
  makeFirstSessions(process);
}

std::int32_t BIMInitialize(Process& process, void* /*instance*/, std::int32_t /*unused*/) {
  EnablePressAndHoldPalette();
  process.state<SessionState>().gActiveSession = nullptr;
  InitAscii2KeyCodeTable();
  Open_IMK_Resource(process);
  Init_Toolversion(process);
  set_SETMENUFLAG(process, 1);
  if (BIMInitializeMessageReceiving(process) != 0) {
    Log(process, "BIMInitializeMessageReceiving Create Port Error ");
  }
  return 0;
}

void Open_IMK_Resource(Process& process) {
  ResourceManager& resources = process.platform().resourceManager;
  const std::int32_t refNum = resources.CFBundleOpenBundleResourceMap(kBundle);
  if (refNum == 0) return Log(process, "CAUTION: refnum not open");
  if (refNum == -1) return Log(process, "CAUTION: no refnum --  not open");
  const std::int32_t current = resources.CurResFile();
  resources.UseResFile(refNum);
  readMenuResources(process);
  resources.UseResFile(current);
  resources.CFBundleCloseBundleResourceMap(kBundle, refNum);
}

// Press-and-hold stays as the system has it.
void EnablePressAndHoldPalette() {}

void BIMTerminate(Process& /*process*/) {}

void BIMInitialize_Pencil(Process& /*process*/) {}

void BIMTerminate_Pencil(Process& /*process*/) {}

}  // namespace quorvane
