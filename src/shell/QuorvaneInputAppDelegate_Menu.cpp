#include <algorithm>
#include <array>

#include "src/base/Log.h"
#include "src/base/Modifiers.h"
#include "src/base/OSVersion.h"
#include "src/bridge/Presence.h"
#include "src/menu/MenuState.h"
#include "src/session/QBIM_IMK_SessionRecord.h"
#include "src/session/QuorvaneInputController.h"
#include "src/shell/QuorvaneInputAppDelegate.h"

namespace quorvane {
namespace {

constexpr std::uint16_t kFirstThatAlwaysRefreshes = 1012;
/// Openings that an older system passes over before it refreshes.
constexpr std::int64_t kPassedOverByOld = 4;

struct FilledMenu {
  std::u16string_view title;
  std::string_view logged;
};
constexpr std::array<FilledMenu, 3> kFilledMenus{
    {{u"Spelling", "menuWillOpen Spelling"},
     {u"AutoType", "menuWillOpen AutoType"},
     {u"Grammar Writing Style", "menuWillOpen Grammar Writing Style"}}};

std::uint32_t suggestionState(Instance& instance) {
  const BIMSessionRec* const session = BIMGetActiveSession(instance);
  return session != nullptr ? session->appMark32 : 0;
}

}  // namespace

// A menu opened on the heels of a key is not refreshed.
void QuorvaneInputAppDelegate::menuWillOpen(NSMenu& menu) {
  const auto& controller = instance_.state<ControllerState>();
  if (controller.INITED_FLAG == 0) return;
  if (controller.Event_keyDownEvent != 0) {
    cancel_keyDownEvent(instance_);
    return Log(instance_, "**** is_keyDownEvent Cancel");
  }
  if (IsQUORVANEAPPRUNNING(instance_) != 0) refreshMenu(menu);
}

void QuorvaneInputAppDelegate::refreshMenu(const NSMenu& menu) {
  for (const FilledMenu& filled : kFilledMenus) {
    if (menu.title == filled.title) Log(instance_, filled.logged);
  }
  const bool old = Get_OS_MAC_VERSION(instance_) < kFirstThatAlwaysRefreshes;
  auto& count = instance_.state<AppDelegateState>().submenucount;
  if (++count <= (old ? kPassedOverByOld : 0)) return;
  count = 0;
  for (const std::uint32_t head : {"MWSt"_4cc, "SpLg"_4cc, "ATyp"_4cc}) {
    Set_up_Submenus(instance_, head);
  }
  const NSMenuItem* const second = menu.itemArray.size() > 1 ? menu.itemArray[1].get() : nullptr;
  NS_IMK_PencilMenuEnableItems(instance_, second, suggestionState(instance_));
}

bool QuorvaneInputAppDelegate::performKeyEquivalent(const NSEvent& event) {
  Log(instance_, "performKeyEquivalent ", classicModifiers(event.modifierFlags));
  return true;
}

void QuorvaneInputAppDelegate::menuWillSendAction(const NSMenuItem& /*item*/) {
  Log(instance_, "menuWillSendAction");
}

void QuorvaneInputAppDelegate::menuDidSendAction(NSMenu& /*menu*/) {
  Log(instance_, "menuDidSendAction");
}

void QuorvaneInputAppDelegate::DidEndTracking(NSMenu& /*menu*/) {
  Log(instance_, "DidEndTracking");
}

void QuorvaneInputAppDelegate::menuDidClose(NSMenu& /*menu*/) {
  Log(instance_, "QIMK Delegate -menuDidClose");
}

void QuorvaneInputAppDelegate::menuNeedsUpdate(NSMenu& /*menu*/) {
  Log(instance_, "QIMK Delegate -menuNeedsUpdate");
}

}  // namespace quorvane
