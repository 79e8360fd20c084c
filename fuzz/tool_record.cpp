// The tool record as a whole under a running key path: keys, clicks and commands, while the main
// application, other processes and the system do anything at any moment.

#include "fuzz/Target.h"
#include "src/base/BigEndian.h"
#include "src/bridge/SharedLayout.h"
#include "src/bridge/SpellCheckCache.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/menu/InputMenu.h"
#include "src/menu/MenuTable.h"
#include "src/menu/OpeningRoute.h"
#include "src/menu/QBIM_WritingStyle_IMK.h"
#include "src/session/QBIM_IMK_CharFix.h"
#include "src/session/QBIM_IMK_Interactive.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/session/QuorvaneInputController.h"
#include "tests/support/World.h"

namespace quorvane::fuzz {
namespace {

constexpr int kStepLimit = 120;

field::Delivery delivery(Input& input) {
  const std::uint8_t choice = input.byte();
  return {(choice & 7) != 7, (choice & 8) != 0};
}

void pressOddly(Subject& subject, Input& input) {
  const NSEvent key = keyEvent(input);
  subject.press(key, delivery(input));
}
void type(Subject& subject, Input& input) {
  for (const std::uint8_t byte : input.counted()) {
    NSEvent key;
    key.characters = {static_cast<char16_t>(byte)};
    subject.press(key);
  }
}
void typeOften(Subject& subject, Input& input) {
  const NSEvent key = keyEvent(input);
  for (std::size_t left = 1 + input.byte() / 2; left > 0; --left) subject.press(key);
}
void deliver(Subject& subject, Input& input) {
  constexpr std::array kTypes{NSEventType::LeftMouseDown, NSEventType::LeftMouseUp,
                              NSEventType::KeyDown,       NSEventType::KeyUp,
                              NSEventType::FlagsChanged,  NSEventType::OtherMouseDown};
  NSEvent event = keyEvent(input);
  event.type = input.oneOf(kTypes);
  subject.deliver(event, delivery(input));
}
void click(Subject& subject, Input& input) { subject.host.text.click(input.number()); }
void focus(Subject& subject, Input& input) {
  const std::size_t choice = input.below(4);
  subject.host.text.focus(choice < 3 ? subject.documents[choice] : nullptr);
}
void turn(Subject& subject, Input& /*input*/) {
  subject.disturb();
  subject.host.runPending();
}
void passTime(Subject& subject, Input& input) {
  subject.disturb();
  subject.host.wait(input.byte() * memory::kNanosecondsPerTick);
}

memory::Answer answer(Subject& subject, Input& input) {
  memory::Answer given;
  const std::uint8_t manner = input.byte();
  given.afterTicks = manner % 16;
  given.evenIfTakenBack = (manner & 16) != 0;
  if ((manner & 32) != 0) given.afterTicks.reset();
  given.action = [&subject, script = copyOf(input.counted())] { worldActions(subject, script); };
  return given;
}
void answerScan(Subject& subject, Input& input) {
  subject.host.mainApplication.answerScan(answer(subject, input));
}
void answerBit(Subject& subject, Input& input) {
  const auto bit = static_cast<unsigned>(input.below(32));
  subject.host.mainApplication.answer(bit, answer(subject, input));
}
void plan(Subject& subject, Input& input) {
  const std::uint8_t n = input.byte();
  planAtCall(subject, n, input.counted());
}

/// A window of the main application and smart characters, so that keys have somebody to take them.
void showWindow(Subject& subject, Input& input) {
  constexpr std::array<std::uint32_t, 4> kOwners{"WRTR"_4cc, "WRTR"_4cc, "QVPX"_4cc, 0};
  memory::MemoryMainApplication& main = subject.host.mainApplication;
  subject.disturb();
  main.setField(12, input.oneOf(kOwners));
  main.setField(19, 0);
  main.setField(25, input.byte() & 1);
  main.setField(27, input.number() % 3);
  main.setField(31, input.byte() % 3);
  main.setField(38, input.byte());
}

std::uint32_t commandOf(Input& input) {
  constexpr std::array<std::uint32_t, 16> kCommands{
      2, 6, 8, 17, 35, 87, 100, 104, 108, 121, 16383, 16390, 17100, 17110, 17149, 65534};
  return input.oneOf(kCommands);
}
template <auto route>
void ask(Subject& subject, Input& input) {
  route(subject.instance, commandOf(input));
}
constexpr Step askByMessage = ask<CallDirectQorvToolCommandAppEvent>;
constexpr Step askByFlagAndWait = ask<Do_BIM_CallDirectQorvToolCommandAppEvent_Wait>;
constexpr Step askAndWait = ask<CallDirectQorvToolCommandAppEventWait>;
void openingRoute(Subject& subject, Input& input) {
  const std::uint32_t command = commandOf(input);
  CallQuorvaneToolCommand(subject.instance, command, input.flag());
}
void askForMenu(Subject& subject, Input& input) {
  if (input.flag()) {
    do_New_Get_Qorv_Menu_Handle(subject.instance, 0);
  } else {
    GetQorvSubMenuHandle(subject.instance);
  }
}
void offerStyles(Subject& subject, Input& input) {
  const int id = segment(subject, 897);
  subject.host.sharedMemory.writeWord(id, kMenuCountOffset, input.number());
  subject.host.sharedMemory.writeWord(id, kMenuCheckedOffset, input.number());
  subject.host.sharedMemory.write(id, kMenuItemsOffset, copyOf(input.take(input.half() % 384)));
  GetWritingStyleMenu(subject.instance, 0);
  require(SubMenu_Count(subject.instance, "MWSt"_4cc) <= kMenuBufferSize - kMenuItemsOffset,
          "no more writing styles than bytes");
}
/// By its tag, or any number.
void orderCommand(Subject& subject, Input& input) {
  const std::uint32_t command = input.flag() ? Convert_TagToCommandID(input.byte())
                                             : input.number() + 1000 * (input.byte() % 4U);
  CFData data(sizeof command);
  putBigEndian(data, 0, command);
  subject.host.mainApplication.sendMessage(230, data);
  turn(subject, input);
}

void claimNextKey(Subject& subject, Input& /*input*/) {
  subject.instance.state<ControllerState>().KEYED_INITED_FLAG = 1;
}
void keepHouse(Subject& subject, Input& input) {
  switch (input.below(5)) {
    case 0:
      return Check_App_HouseKeeping(subject.instance);
    case 1:
      return DeleteAllQorvSessionHandleID(subject.instance);
    case 2:
      return Get_QuorvaneInputController(subject.instance).dealloc();
    case 3:
      CheckCurrentCheckStatus(subject.instance, input.flag());
      return;
    default:
      ISOPENTOOLREC(subject.instance);
      Wake_PHP_SharedMemProcess(subject.instance);
  }
}
void changeDocumentKind(Subject& subject, Input& input) {
  auto& services = subject.host.textServicesManager;
  services.activeDocument = input.byte() % 2;
  services.documentProperties[1]["dapy"_4cc] = input.number();
}

void moveCaret(Subject& subject, Input& input) {
  if (field::Document* document = subject.host.text.focused(); document != nullptr) {
    const std::uint64_t location = input.number();
    document->select({location, input.byte()});
  }
}

void askState(Subject& subject, Input& input) {
  Instance& instance = subject.instance;
  Get_IMK_updateMenus(instance, input.number());
  Get_InputMethod_UpdateMenus(instance, input.number());
  Is_Quorvane_AppReady(instance);
  Get_ToolCRecPtr_unusedx2(instance);
  GET_ONE_TOOLCRECPTR_QORVSTATUS(instance, input.number());
  Get_Reset_Quorvane_App_Input(instance);
}
void readSpelling(Subject& subject, Input& input) {
  std::vector<std::uint8_t> out(input.half() % 800);
  subject.host.sharedMemory.write(segment(subject, kSpellRecordKey), kSpellCountOffset,
                                  input.counted());
  if (input.byte() == 0) DO_GetToolSpellCheckRecordPtr(subject.instance);
  GET_LAST_SPELLCHECK(subject.instance, textOf(input.counted()), out, input.byte() % 3);
  const auto found = GET_LAST_SPELLCHECK_ARRY(subject.instance, u"");
  require(!found || found->size() <= kSpellSlots, "no more suggestions than slots");
}
void install(Subject& subject, Input& input) {
  memory::MemoryInstalledApplication application;
  application.path = subject.host.files.applicationsFolder + "/Quorvane_ARC7_X/Quorvane.app";
  application.process.signature = memory::MemoryMainApplication::kSignature;
  application.fails = input.flag();
  if (const std::uint8_t ticks = input.byte(); ticks != 0) application.afterTicks = ticks;
  auto& services = subject.host.launchServices;
  if (services.find(application.path) == nullptr) services.install(application);
}
void fixOneself(Subject& subject, Input& input) {
  const bool parked = input.flag();
  const std::uint8_t byte = input.byte();
  if (parked) {
    DO_Fix_Commit_Composition(subject.instance, BIMGetActiveSession(subject.instance), byte);
  } else {
    Send_Char_Fix(subject.instance, &byte, {input.number()});
  }
}

constexpr std::array<Step, 31> kSteps{
    press,       chooseFromMenu, askByMessage, pressOddly,   type,         typeOften,
    deliver,     click,          focus,        turn,         orderCommand, passTime,
    answerScan,  answerBit,      plan,         showWindow,   offerStyles,  askByFlagAndWait,
    askAndWait,  openingRoute,   askForMenu,   claimNextKey, keepHouse,    changeDocumentKind,
    worldAction, moveCaret,      putUserFile,  askState,     fixOneself,   readSpelling,
    install};

}  // namespace

void run(Bytes bytes) { takeSteps(bytes, kStepLimit, kSteps); }

}  // namespace quorvane::fuzz
