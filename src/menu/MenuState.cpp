#include "src/menu/MenuState.h"

#include <optional>

#include "src/bridge/Presence.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/menu/InputMenu.h"
#include "src/menu/PencilMenulet.h"
#include "src/menu/QBIM_AutoType_IMK.h"
#include "src/menu/QBIM_IMK_Params.h"
#include "src/menu/QBIM_SpellMenu_IMK.h"
#include "src/menu/QBIM_WritingStyle_IMK.h"
#include "src/menu/qorvTextTools.h"

namespace quorvane {
namespace {

constexpr Ticks kBetween{90};
constexpr FourCharCode kAlwaysPublishesPosition = "emal"_4cc;

// Bits of MenuFlags, beside those that the mask takes out of all of it.
constexpr std::uint32_t kNoCheck = 0x2;
constexpr std::uint32_t kNoStatistics = 0x4 | 0x800;
constexpr std::uint32_t kNoHelp = 0x20;

// Tags that are addressed as they are; 30 and 31 are of no item here.
constexpr std::array<std::int64_t, 6> kCheckItems{4, 30, 104, 1, 2, 3};
constexpr std::array<std::int64_t, 2> kStatisticsItems{15, 16};
constexpr std::array<std::int64_t, 6> kItemsForClients{31, 35, 15, 16, 30, 13};
constexpr std::array<std::uint32_t, 3> kFilledHeads{"ATyp"_4cc, "SpLg"_4cc, "MWSt"_4cc};

/// An item of interactive checking with the switch that it shows.
struct SwitchItem {
  std::int64_t tag;
  std::uint32_t flag;
  std::uint32_t needs = 0;  ///< a switch without which the item can't be chosen
};
constexpr std::array<SwitchItem, 9> kSwitchItems{{{5, kSpellingFlag},
                                                  {6, kGrammarFlag},
                                                  {7, kAutoCorrectFlag},
                                                  {8, kAutoTypeFlag},
                                                  {144, kCompletionFlag},
                                                  {10, 0x4, kGrammarFlag},
                                                  {9, 0x8, kSpellingFlag},
                                                  {11, kTextPositionFlag},
                                                  {12, 0x800}}};
constexpr std::int64_t kMasterItem = 111;

struct ApplicationState {
  bool checking = false;  // field 15
  std::uint32_t interactive = 0;
  std::uint32_t menuFlags = 0;
  std::uint32_t menuMask = 0;
  bool windowOpen = false;
};

std::optional<ApplicationState> readState(Instance& instance) {
  const ToolRec record(instance);
  if (!record) return std::nullopt;
  return ApplicationState{.checking = (record.get(ToolCRecPtr_AppState) & 1) != 0,
                          .interactive = record.get(ToolCRecPtr_InteractiveMode),
                          .menuFlags = record.get(ToolCRecPtr_MenuFlags),
                          .menuMask = record.get(ToolCRecPtr_MenuMask),
                          .windowOpen = record.get(ToolCRecPtr_isDocWindowOpen) != kNoWindow};
}

template <std::size_t Count>
void disableTags(Instance& instance, const std::array<std::int64_t, Count>& tags) {
  for (const std::int64_t tag : tags) EnableNSMenuItemTag(instance, tag, false);
}

/// Nothing else takes back that a head was disabled while the main application was away.
void enableFilledHead(Instance& instance, std::uint32_t head) {
  EnableNSMenuItem(instance, head, SubMenu_Count(instance, head) != 0);
}

void disableFilledHeads(Instance& instance) {
  for (const std::uint32_t head : kFilledHeads) EnableNSMenuItem(instance, head, false);
}

void disableWithoutRecord(Instance& instance) {
  disableFilledHeads(instance);
  EnableNSMenuItem(instance, "Tiac"_4cc, false);
  EnableNSMenuItem(instance, "TxTL"_4cc, false);
  EnableNSMenuItem(instance, "ShSg"_4cc, false);
}

void disableByFlags(Instance& instance, std::uint32_t menuFlags) {
  if ((menuFlags & kNoStatistics) != 0) disableTags(instance, kStatisticsItems);
  if ((menuFlags & kNoHelp) != 0) EnableNSMenuItem(instance, "GtHp"_4cc, false);
  if ((menuFlags & kNoCheck) != 0) NS_Set_CheckAllMenuItems(instance, false);
}

void enableInClient(Instance& instance, bool suggests) {
  EnableNSMenuItem(instance, "ShSg"_4cc, suggests);
  EnableNSMenuItem(instance, "TxTL"_4cc, true);
}

void enableInMainApplication(Instance& instance, bool checking) {
  if (checking) return EnableAll_NSMenuItems(instance, false);
  NS_Set_CheckAllMenuItems(instance, false);
  disableTags(instance, kItemsForClients);
}

void enableByState(Instance& instance, const NSMenuItem* item, const ApplicationState& state,
                   std::uint32_t suggestions) {
  if ((state.menuFlags & state.menuMask) != 0) return EnableAll_NSMenuItems(instance, false);
  NS_Set_InteractiveMenuItems(instance, item, state.interactive);
  disableByFlags(instance, state.menuFlags);
  if (isQUORVANEAPP_FRONT(instance) != 0) {
    enableInMainApplication(instance, state.checking);
  } else {
    enableInClient(instance, suggestions != 0 && !state.windowOpen);
  }
}

}  // namespace

void Set_Main_Menu(Instance& instance) {
  Init_Toolversion(instance);
  const bool enable = isQUORVANEAPP_FRONT(instance) == 0;
  EnableAll_NSMenuItems(instance, enable);
  if (enable) NS_Set_Date_Time_Menu(instance);
}

void NS_IMK_PencilMenuEnableItems(Instance& instance, const NSMenuItem* item,
                                  std::uint32_t suggestions) {
  SETOPENQUITMENUTEXT(instance);
  NS_Set_Date_Time_Menu(instance);
  EnableAll_NSMenuItems(instance, true);
  if (const auto state = readState(instance)) {
    enableByState(instance, item, *state, suggestions);
  } else {
    disableWithoutRecord(instance);
  }
  Set_Qorv_Menulet(instance);
}

// The marks show what was read before a client's own demand: it shows at the next opening.
void NS_Set_InteractiveMenuItems(Instance& instance, const NSMenuItem* /*item*/,
                                 std::uint32_t interactive) {
  const FourCharCode front = FRONTPROCESSSIGNATURE(instance);
  Get_Qorvatatus_Flags(instance);
  auto& switches = instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  const std::uint32_t shown = interactive != 0 ? switches : 0;
  bool master = (shown & kInteractiveCheck) != 0;
  NS_CheckMark_MenuItem_FromTag(instance, kMasterItem, master);
  if (front == kQuorvaneSignature) {
    EnableNSMenuItemTag(instance, kMasterItem, false);
    master = false;
  }
  for (const SwitchItem& item : kSwitchItems) {
    const bool met = (shown & item.needs) == item.needs;
    EnableNSMenuItemTag(instance, item.tag, master && met);
    NS_CheckMark_MenuItem_FromTag(instance, item.tag, (shown & item.flag) != 0);
  }
  if (front != kAlwaysPublishesPosition) return;
  switches |= kTextPositionFlag;
  EnableNSMenuItem(instance, "Tgpm"_4cc, false);
}

void NS_Set_CheckAllMenuItems(Instance& instance, bool on) {
  for (const std::int64_t tag : kCheckItems) EnableNSMenuItemTag(instance, tag, on);
}

void SETOPENQUITMENUTEXT(Instance& instance) {
  const auto& menu = instance.state<InputMenuState>();
  const bool runs = IsQUORVANEAPPRUNNING(instance) != 0;
  const std::string& title = runs ? menu.QuitMenuItemStr : menu.OpenMenuItemStr;
  const std::string*& shown = instance.state<MenuUpdateState>().OLDCHECKMARKQUITMENUNUSTATESTR;
  if (title.empty() || shown == &title) return;
  NSMenu_SetMenuItemText(instance, "QtOp"_4cc, title);
  shown = &title;
}

void Set_up_Submenus(Instance& instance, std::uint32_t commandID) {
  const bool usable = Is_Quorvane_AppReady(instance) != 0 && isQUORVANEAPP_FRONT(instance) == 0;
  if (!usable) return disableFilledHeads(instance);
  if (commandID == "SpLg"_4cc) return Get_Spelling_Submenu(instance);
  GetAndSet_Style_SubMenu(instance, commandID);
}

void Get_Spelling_Submenu(Instance& instance) {
  MSPELLCreateMenu(instance, 0);
  enableFilledHead(instance, "SpLg"_4cc);
}

void GetAndSet_Style_SubMenu(Instance& instance, std::uint32_t commandID) {
  if (Is_Quorvane_AppReady(instance) == 0) return;
  if (commandID == "MWSt"_4cc) GetWritingStyleMenu(instance, 1000);
  if (commandID == "ATyp"_4cc) Get_AutoType_Menu(instance, 3000);
  enableFilledHead(instance, commandID);
}

std::int32_t Get_Menu_Interval(Instance& instance, std::size_t index) {
  auto& allowed = instance.state<MenuUpdateState>().Menu_timerinterval;
  const Ticks now = Tick_Count(instance);
  if (index >= allowed.size() || now <= allowed[index]) return 0;
  allowed[index] = now + kBetween;
  return 1;
}

void SetMenuWhenAppChanges(Instance& instance) {
  if (is_SETMENUFLAG(instance) == 0) return;
  set_SETMENUFLAG(instance, 0);
  SetGrammarMenuIcon();
}

void SetGrammarMenuIcon() {}

void print_menucontext() {}

}  // namespace quorvane
