#include "src/shell/ShellTarget.h"

#include "src/keys/QBIM_Paste_IMK.h"
#include "src/session/FixGuard.h"
#include "src/session/QBIM_IMK_Publication.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/shell/QuorvaneInputController.h"
#include "src/shell/QuorvaneInputController_Commit.h"
#include "src/shell/QuorvaneInputController_TextPosition.h"

namespace quorvane {

bool ShellTarget::Do_nsstring_commit_to_composition(const std::u16string& text,
                                                    std::uint32_t replaceLength) {
  return quorvane::Do_nsstring_commit_to_composition(process_, text, replaceLength);
}

void ShellTarget::Do_commit_to_composition(const std::uint8_t* bytes, std::uint32_t length,
                                           std::uint32_t originalReplace) {
  quorvane::Do_commit_to_composition(process_, bytes, length, originalReplace);
}

void ShellTarget::Do_Get_Text_Position(BIMSessionRec* session) {
  quorvane::Do_Get_Text_Position(process_, session);
}

std::uint64_t ShellTarget::BIMGetActiveSession() {
  const BIMSessionRec* session = quorvane::BIMGetActiveSession(process_);
  return session != nullptr ? session->handle : 0;
}

std::uint32_t ShellTarget::documentTag(std::uint64_t session) {
  const BIMSessionRec* record = findSession(process_, session);
  return record != nullptr ? record->documentTag : 0;
}

void ShellTarget::Update_Document_Session(std::uint64_t session) {
  if (BIMSessionRec* record = findSession(process_, session); record != nullptr) {
    quorvane::Update_Document_Session(process_, record);
  }
}

// The text, which the main application writes first, is there before its message is judged.
void ShellTarget::commitFix(const std::u16string* text, std::uint32_t replaceLength) {
  Check_Update_Document_Session_Buffer(process_, nullptr);
  const auto fault =
      text != nullptr ? faultOf(process_, *text, replaceLength) : FixFault::Unreadable;
  if (fault) return dropFix(process_, *fault);
  if (!Do_nsstring_commit_to_composition(*text, replaceLength)) {
    return dropFix(process_, FixFault::BeyondCaret);
  }
  keepFix(process_);
}

void ShellTarget::Post_Paste_CommandKey(std::int32_t pid) {
  quorvane::Post_Paste_CommandKey(process_, pid);
}

void ShellTarget::Post_SpecialPaste_CommandKey(std::int32_t pid) {
  quorvane::Post_SpecialPaste_CommandKey(process_, pid);
}

bool ShellTarget::do_handleEvent(const NSEvent& event, IMKTextInput* client) {
  return quorvane::do_handleEvent(process_, event, client);
}

void ShellTarget::do_activateServer1(IMKTextInput* sender) {
  quorvane::do_activateServer1(process_, sender);
}

void ShellTarget::do_deactivateServer1(IMKTextInput* sender) {
  quorvane::do_deactivateServer1(process_, sender);
}

void connectRooms(Process& process) {
  auto& target = process.state<ShellTarget>();
  process.state<InteractiveState>().target = &target;
  process.state<InputControllerState>().checker = &target;
  setMessageTarget(process, &target);
}

}  // namespace quorvane
