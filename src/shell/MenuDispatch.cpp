#include "src/shell/MenuDispatch.h"

#include <algorithm>
#include <array>

#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/completion/InputController.h"
#include "src/keys/QBIM_IMK_EventPosting.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/menu/MenuCommand.h"
#include "src/menu/MenuState.h"
#include "src/menu/OpeningRoute.h"
#include "src/menu/PendingCommand.h"
#include "src/menu/QBIM_AutoType_IMK.h"
#include "src/menu/QBIM_IMK_Params.h"
#include "src/menu/QBIM_SpellMenu_IMK.h"
#include "src/session/CommandSelection.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/QBIM_IMK_WindowCancel.h"
#include "src/session/QuorvaneInputController.h"

namespace quorvane {
namespace {

constexpr std::uint16_t kCopy = 'c';
constexpr std::uint16_t kPaste = 'v';
constexpr std::uint32_t kCheckAllCommand = 2;
constexpr std::uint32_t kCheckAllWithMarksCommand = 45;
constexpr std::uint32_t kSuggestionsCommand = 17;
constexpr std::uint32_t kTextPositionCommand = 98;
constexpr std::uint32_t kWritingStyleCommand = 16384;
constexpr std::uint32_t kAutoTypeCommand = 16385;
constexpr std::uint32_t kQuitCommand = 65534;
constexpr std::uint32_t kPencilMenuOffFlag = 0x20000;

// Actions. `number` is the row's, or in a range the command's place in it.

void nothing(Instance& /*process*/, std::uint32_t /*number*/) {}

void chain(Instance& instance, std::uint32_t next) { Do_Menu_Tool_CommandID(instance, next); }

void copyThen(Instance& instance, std::uint32_t next) {
  Post_CommandKey_MenuCommand(instance, kCopy, next);
}

void selectAndCopyThen(Instance& instance, std::uint32_t next) {
  selectAllForCommand(instance);
  copyThen(instance, next);
}

void tool(Instance& instance, std::uint32_t number) {
  CallQuorvaneToolCommand(instance, number, true);
}

void toolUnnamed(Instance& instance, std::uint32_t number) {
  CallQuorvaneToolCommand(instance, number, false);
}

void check(Instance& instance, std::uint32_t number) {
  if (CallQuorvaneToolCommand(instance, number, true) == -1) PostCommandKey(instance, kPaste);
}

bool wantsMarks(Instance& instance) {
  const ToolRec record(instance);
  return record.get(ToolCRecPtr_AutoMark) == 1;
}

void checkText(Instance& instance, std::uint32_t /*number*/) {
  check(instance, wantsMarks(instance) ? kCheckAllWithMarksCommand : kCheckAllCommand);
}

// The mark stays until the main application takes it back.
void checkWithMarks(Instance& instance, std::uint32_t next) {
  Log(instance, "kCheckAllAutoMarkMenuCommand");
  if (const ToolRec record(instance); record) record.put(ToolCRecPtr_AutoMark, 1);
  chain(instance, next);
}

void direct(Instance& instance, std::uint32_t number) {
  CallDirectQorvToolCommandAppEvent(instance, number);
}

void flagged(Instance& instance, std::uint32_t number) {
  Do_BIM_CallDirectQorvToolCommandAppEvent(instance, number);
}

// It goes in at the caret, which a click may have moved since the text was published.
void insertDate(Instance& instance, std::uint32_t number) {
  Set_InteractiveSession(instance, BIMGetActiveSession(instance), 0);
  flagged(instance, number);
}

void insertDateUTC(Instance& instance, std::uint32_t number) {
  Log(instance, "** InsertDateandTimeUMenuCommand");
  insertDate(instance, number);
}

void toggle(Instance& instance, std::uint32_t mask) { Set_CURRENTAPPFLAGSTATUS(instance, mask); }

void toggleCompletion(Instance& instance, std::uint32_t mask) {
  toggle(instance, mask);
  if ((Get_InteractiveCheck_Status(instance) & mask) != 0) return;
  Cancel_AutoCompleteSession_withoutspace(instance);
}

void toggleTextPosition(Instance& instance, std::uint32_t mask) {
  toggle(instance, mask);
  direct(instance, kTextPositionCommand);
}

void togglePencilMenu(Instance& instance, std::uint32_t mask) {
  toggle(instance, mask);
  const bool off = (instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS & mask) != 0;
  instance.state<MenuDispatchState>().PencilandInputMenuFlag = off ? 0 : 1;
  if (!off) LaunchQuorvaneMenulet(instance);
}

void openOrQuit(Instance& instance, std::uint32_t quitCommand) {
  if (IsQUORVANEAPPRUNNING(instance) != 0) {
    flagged(instance, quitCommand);
    SetGrammarMenuIcon();
  } else {
    QorvLaunchApp(instance);
    CallQuorvaneMenuIconCheckEventCompletion(instance);
  }
}

void showSuggestions(Instance& instance, std::uint32_t number) {
  if (Set_InteractiveSession(instance, BIMGetActiveSession(instance), 0) != 0) {
    flagged(instance, number);
  }
}

void chooseWritingStyle(Instance& instance, std::uint32_t number) {
  Log(instance, "Writing Style: ", number);
  {
    const ToolRec record(instance);
    if (!record) return;
    record.put(ToolCRecPtr_WritingStyleRequest, number);
  }
  direct(instance, kWritingStyleCommand);
}

void chooseSpelling(Instance& instance, std::uint32_t number) {
  const std::int32_t index = static_cast<std::int32_t>(number) - 1;
  Log(instance, "Spelling: ", index);
  SaveSPELLCreateMenuItem(instance, index);
}

void chooseAutoType(Instance& instance, std::uint32_t number) {
  {
    const ToolRec record(instance);
    if (!record) return;
    Log(instance, "AutoType: ", number);
    record.put(ToolCRecPtr_AutoTypeSelection, number);
  }
  SaveAutoTypeCreateMenuItem(instance, number);
  direct(instance, kAutoTypeCommand);
}

using Action = void (*)(Instance& instance, std::uint32_t number);

struct CommandRow {
  std::uint32_t commandID;
  Action act;
  std::uint32_t number = 0;
};
constexpr std::array<CommandRow, 64> kCommands{{
    // A check: select, copy, tell.
    {"CkAl"_4cc, chain, "PrAl"_4cc},
    {"CkAg"_4cc, chain, "PrAg"_4cc},
    {"CkAs"_4cc, chain, "PrAs"_4cc},
    {"CkMk"_4cc, checkWithMarks, "PrAl"_4cc},
    {"CkSp"_4cc, chain, "PrSp"_4cc},
    {"CkSe"_4cc, chain, "PrGr"_4cc},
    {"CkSb"_4cc, chain, "PrSe"_4cc},
    {"CkRd"_4cc, chain, "PrRd"_4cc},
    {"PrAl"_4cc, selectAndCopyThen, "GcTl"_4cc},
    {"PrAg"_4cc, selectAndCopyThen, "GcGR"_4cc},
    {"PrAs"_4cc, selectAndCopyThen, "GcSP"_4cc},
    {"PrSp"_4cc, copyThen, "GcSP"_4cc},
    {"PrGr"_4cc, copyThen, "GcGR"_4cc},
    {"PrSe"_4cc, copyThen, "GcTl"_4cc},
    {"PrRd"_4cc, copyThen, "GsTl"_4cc},
    {"GcGR"_4cc, check, 7},
    {"GcSP"_4cc, check, 6},
    {"GcTl"_4cc, checkText},
    {"GcWs"_4cc, nothing},
    {"GsTl"_4cc, tool, 25},
    {"Grph"_4cc, chain, "GrpS"_4cc},
    {"GrpS"_4cc, copyThen, "Grst"_4cc},
    {"Grst"_4cc, tool, 26},
    // Looking up, and windows of the main application.
    {"LkUp"_4cc, copyThen, "GlTl"_4cc},
    {"GlTl"_4cc, flagged, 35},
    {"GtWr"_4cc, toolUnnamed, 32},
    {"GtMs"_4cc, toolUnnamed, 33},
    {"GtAb"_4cc, toolUnnamed, 64},
    {"GtHp"_4cc, toolUnnamed, 65},
    {"TsLu"_4cc, copyThen, "GTtl"_4cc},
    {"GTtl"_4cc, direct, 37},
    {"NAty"_4cc, copyThen, "GNAt"_4cc},
    {"GNAt"_4cc, direct, 42},
    // Text tools.
    {"FMPr"_4cc, copyThen, "PFMp"_4cc},
    {"RMsp"_4cc, copyThen, "PRMs"_4cc},
    {"ReMQ"_4cc, copyThen, "PReM"_4cc},
    {"PFMp"_4cc, flagged, 17101},
    {"PRMs"_4cc, flagged, 17100},
    {"PReM"_4cc, flagged, 17102},
    {"AlCp"_4cc, copyThen, "PrAC"_4cc},
    {"LwCs"_4cc, copyThen, "PrLC"_4cc},
    {"PrAC"_4cc, flagged, 17110},
    {"PrLC"_4cc, flagged, 17111},
    {"DaTs"_4cc, insertDate, 17140},
    {"DaTl"_4cc, insertDate, 17141},
    {"DaTa"_4cc, insertDate, 17142},
    {"DTTs"_4cc, insertDate, 17145},
    {"DTTl"_4cc, insertDate, 17146},
    {"DTTa"_4cc, insertDate, 17147},
    {"DTTu"_4cc, insertDateUTC, 17149},
    // The main application itself.
    {"QtOp"_4cc, openOrQuit, kQuitCommand},
    {"ShSg"_4cc, showSuggestions, kSuggestionsCommand},
    // Switches.
    {"Tacr"_4cc, toggle, kAutoCorrectFlag},
    {"Taty"_4cc, toggle, kAutoTypeFlag},
    {"Tgia"_4cc, toggle, kGrammarFlag},
    {"Tgso"_4cc, toggle, 0x800},
    {"Tgsp"_4cc, toggle, 0x2000},
    {"Tgss"_4cc, toggle, 0x4},
    {"Tsas"_4cc, toggle, 0x8},
    {"Tsia"_4cc, toggle, kSpellingFlag},
    {"Timc"_4cc, toggle, kInteractiveCheck},
    {"Tacy"_4cc, toggleCompletion, kCompletionFlag},
    {"Tgpm"_4cc, toggleTextPosition, kTextPositionFlag},
    {"GpMu"_4cc, togglePencilMenu, kPencilMenuOffFlag},
}};

/// Items of the submenus that are made of files: a thousand numbers each.
struct CommandRange {
  std::uint32_t first;
  Action act;
};
constexpr std::uint32_t kRangeSize = 1000;
constexpr std::array<CommandRange, 3> kRanges{
    {{1000, chooseWritingStyle}, {2000, chooseSpelling}, {3000, chooseAutoType}}};

std::int32_t act(Instance& instance, std::uint32_t commandID) {
  const auto* row = std::ranges::find(kCommands, commandID, &CommandRow::commandID);
  if (row != kCommands.end()) {
    row->act(instance, row->number);
    return 0;
  }
  const auto* range = std::ranges::find_if(
      kRanges, [=](const auto& it) { return commandID - it.first < kRangeSize; });
  if (range == kRanges.end()) return kCommandNotHandled;
  range->act(instance, commandID - range->first);
  return 0;
}

std::int32_t run(Instance& instance, std::uint32_t commandID) {
  Log(instance, "Do_Menu_Tool_CommandID ", commandID);
  Cancel_Iteractive_Window(instance);
  return act(instance, commandID);
}

}  // namespace

void Install_MenuDispatch(Instance& instance) { instance.state<MenuCommandState>().run = run; }

void Set_CURRENTAPPFLAGSTATUS(Instance& instance, std::uint32_t mask) {
  auto& switches = instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
  switches ^= mask;
  SaveAppInteractivedata(instance);
  SetGrammarMenuIcon();
  if (const ToolRec record(instance); record) record.put(ToolCRecPtr_AppFlagStatus, switches);
}

}  // namespace quorvane
