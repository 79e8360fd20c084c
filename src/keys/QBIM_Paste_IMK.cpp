#include "src/keys/QBIM_Paste_IMK.h"

#include "src/base/Log.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/keys/QBIM_IMK_EventPosting.h"

namespace quorvane {
namespace {

constexpr std::uint16_t kPasteKey = 9;  // where V lies on a US keyboard
constexpr std::uint16_t kPasteWord = cmdKey;
constexpr std::uint16_t kSpecialPasteWord = cmdKey | shiftKey | optionKey;
constexpr Microseconds kPauseAfterPaste{20};

// One of the chord's events. Unlike that of the event route it has no source and turns no switches.
void Do_POST_CGEVENT(Instance& instance, CGEventSource* /*source*/, const ProcessSerialNumber& psn,
                     std::int32_t pid, std::uint16_t keyCode, std::uint16_t modifierWord,
                     bool keyDown) {
  EventPosting& posting = instance.platform().eventPosting;
  posting.CGEventCreate(nullptr).reset();  // warms up the event system
  CGEventRef event = posting.CGEventCreateKeyboardEvent(nullptr, keyCode, keyDown);
  setEventFlags(posting, event.get(), modifierWord);
  CGEventPost_Character(instance, event.get(), psn, pid);
  event.reset();
  u2sleep(instance, kPauseAfterPaste);
}

bool findSignature(Instance& instance, const ToolRec& record, FourCharCode signature,
                   ProcessSerialNumber& psn, ProcessInfoRec& info) {
  if (signature == 0) return false;
  const ProcessEntry entry{record.get(QorvStatus_PasteProcessType, FieldGroup::QorvStatus),
                           signature};
  return FINDAPPPROCESS(instance, psn, info, {&entry, 1}) != 0;
}

}  // namespace

void Post_Paste_CommandKey(Instance& instance, std::int32_t pid) {
  instance.state<PasteState>().ToolCRecPtr_QORVSTATUS_returnPid = pid;
  Post_PasteKeyEvent(instance, kPasteWord);
}

void Post_SpecialPaste_CommandKey(Instance& instance, std::int32_t pid) {
  instance.state<PasteState>().ToolCRecPtr_QORVSTATUS_returnPid = pid;
  Post_PasteKeyEvent(instance, kSpecialPasteWord);
}

void Post_PasteKeyEvent(Instance& instance, std::uint16_t modifierWord) {
  ProcessSerialNumber psn;
  std::int32_t pid = 0;
  GetEventProcessSerial(instance, psn, pid);
  CGEventSourceRef source =
      instance.platform().eventPosting.CGEventSourceCreate(kCGEventSourceStatePrivate);
  Do_POST_CGEVENT(instance, source.get(), psn, pid, kPasteKey, modifierWord, true);
  Do_POST_CGEVENT(instance, source.get(), psn, pid, kPasteKey, modifierWord, false);
  source.reset();
}

std::uint32_t GetEventProcessSerial(Instance& instance, ProcessSerialNumber& psn,
                                    std::int32_t& pid) {
  const ToolRec record(instance);
  if (!record) return 0;
  ProcessSerialNumber found;
  if (const std::int32_t named = instance.state<PasteState>().ToolCRecPtr_QORVSTATUS_returnPid;
      named != 0) {
    const OSStatus status = instance.platform().processManager.GetProcessForPID(named, found);
    if (status == noErr) {
      Log(instance, "<***> * GetEventProcessSerial app_pid ", named);
      pid = named;
      return 1;
    }
    Log(instance, "ERR GetProcessForPID ", status);
  }
  ProcessInfoRec info;
  const FourCharCode named = record.get(QorvStatus_PasteSignature, FieldGroup::QorvStatus);
  if (findSignature(instance, record, named, found, info) ||
      findSignature(instance, record, GetCurrentFrontApplication(record), found, info)) {
    psn = found;
  }
  return info.processSignature;
}

void CGEventPost_Character(Instance& instance, const CGEvent* event, const ProcessSerialNumber& psn,
                           std::int32_t pid) {
  EventPosting& posting = instance.platform().eventPosting;
  if (pid != 0) {
    ProcessSerialNumber named;
    const OSStatus status = instance.platform().processManager.GetProcessForPID(pid, named);
    if (status != noErr) Log(instance, "ERR GetProcessForPID ", status);
    posting.CGEventPostToPSN(named, event);
  } else if (psn != ProcessSerialNumber{}) {
    posting.CGEventPostToPSN(psn, event);
  }
}

void u2sleep(Instance& instance, Microseconds duration) {
  if (duration != Microseconds(0)) instance.platform().clock.usleep(duration);
}

}  // namespace quorvane
