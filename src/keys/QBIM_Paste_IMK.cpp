#include "src/keys/QBIM_Paste_IMK.h"

#include <algorithm>

#include "src/base/Log.h"
#include "src/bridge/Presence.h"
#include "src/bridge/ProcessWalk.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/keys/QBIM_IMK_EventPosting.h"

namespace quorvane {
namespace {

constexpr std::uint16_t kPasteKey = 9;  // where V lies on a US keyboard
constexpr std::uint16_t kPasteWord = cmdKey;
constexpr std::uint16_t kSpecialPasteWord = cmdKey | shiftKey | optionKey;
constexpr std::uint32_t kPauseAfterPost = 20;  // microseconds

// One of the chord's events. Unlike that of the event route it has no source and turns no switches.
void Do_POST_CGEVENT(Process& process, CGEventSource* /*source*/, const ProcessSerialNumber& psn,
                     std::int32_t pid, std::uint16_t keyCode, std::uint16_t modifierWord,
                     bool keyDown) {
  EventPosting& posting = process.platform().eventPosting;
  posting.CGEventCreate(nullptr).reset();  // warms up the event system
  CGEventRef event = posting.CGEventCreateKeyboardEvent(nullptr, keyCode, keyDown);
  setEventFlags(posting, event.get(), modifierWord);
  CGEventPost_Character(process, event.get(), psn, pid);
  event.reset();
  u2sleep(process, kPauseAfterPost);
}

bool findSignature(Process& process, const ToolRec& record, FourCharCode signature,
                   ProcessSerialNumber& psn, ProcessInfoRec& info) {
  if (signature == 0) return false;
  const ProcessEntry entry{record.get(QorvStatus_PasteProcessType, FieldGroup::QorvStatus),
                           signature, process.state<PasteState>().ToolCRecPtr_QORVSTATUS_returnPid};
  return FINDAPPPROCESS(process, psn, info, {&entry, 1}) != 0;
}

bool isOneOf(std::span<const ProcessEntry> entries, FourCharCode signature) {
  return std::any_of(entries.begin(), entries.end(),
                     [&](const ProcessEntry& entry) { return entry.signature == signature; });
}

}  // namespace

void Post_Paste_CommandKey(Process& process, std::int32_t pid) {
  process.state<PasteState>().ToolCRecPtr_QORVSTATUS_returnPid = pid;
  Post_PasteKeyEvent(process, kPasteWord);
}

void Post_SpecialPaste_CommandKey(Process& process, std::int32_t pid) {
  process.state<PasteState>().ToolCRecPtr_QORVSTATUS_returnPid = pid;
  Post_PasteKeyEvent(process, kSpecialPasteWord);
}

void Post_PasteKeyEvent(Process& process, std::uint16_t modifierWord) {
  ProcessSerialNumber psn;
  std::int32_t pid = 0;
  GetEventProcessSerial(process, psn, pid);
  CGEventSourceRef source =
      process.platform().eventPosting.CGEventSourceCreate(kCGEventSourceStatePrivate);
  Do_POST_CGEVENT(process, source.get(), psn, pid, kPasteKey, modifierWord, true);
  Do_POST_CGEVENT(process, source.get(), psn, pid, kPasteKey, modifierWord, false);
  source.reset();
}

std::uint32_t GetEventProcessSerial(Process& process, ProcessSerialNumber& psn, std::int32_t& pid) {
  const ToolRec record(process);
  if (!record) return 0;
  ProcessSerialNumber found;
  if (const std::int32_t named = process.state<PasteState>().ToolCRecPtr_QORVSTATUS_returnPid;
      named != 0) {
    const OSStatus status = process.platform().processManager.GetProcessForPID(named, found);
    if (status == noErr) {
      Log(process, "<***> * GetEventProcessSerial app_pid ", named);
      pid = named;
      return 1;
    }
    Log(process, "ERR GetProcessForPID ", status);
  }
  ProcessInfoRec info;
  const FourCharCode named = record.get(QorvStatus_PasteSignature, FieldGroup::QorvStatus);
  if (findSignature(process, record, named, found, info) ||
      findSignature(process, record, GetCurrentFrontApplication(record), found, info)) {
    psn = found;
  }
  return info.processSignature;
}

std::int32_t FINDAPPPROCESS(Process& process, ProcessSerialNumber& psn, ProcessInfoRec& info,
                            std::span<const ProcessEntry> entries) {
  ProcessManager& manager = process.platform().processManager;
  psn = {};
  for (ProcessWalk walk(process); walk.next(psn);) {
    Set_InfoRec_ProcessInfoRec(process, info);
    if (manager.GetProcessInformation(psn, info) != noErr) continue;
    if (isOneOf(entries, info.processSignature)) return 1;
  }
  return 0;
}

void CGEventPost_Character(Process& process, const CGEvent* event, const ProcessSerialNumber& psn,
                           std::int32_t pid) {
  EventPosting& posting = process.platform().eventPosting;
  if (pid != 0) {
    ProcessSerialNumber named;
    const OSStatus status = process.platform().processManager.GetProcessForPID(pid, named);
    if (status != noErr) Log(process, "ERR GetProcessForPID ", status);
    posting.CGEventPostToPSN(named, event);
  } else if (psn != ProcessSerialNumber{}) {
    posting.CGEventPostToPSN(psn, event);
  }
}

void u2sleep(Process& process, std::uint32_t microseconds) {
  if (microseconds != 0) process.platform().clock.usleep(microseconds);
}

}  // namespace quorvane
