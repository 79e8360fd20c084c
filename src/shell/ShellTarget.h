#pragma once
// Hands the rooms below what they ask of this one.

#include "src/bridge/QBIMMessageReceive.h"
#include "src/completion/InputController.h"
#include "src/session/QBIM_IMK_Interactive.h"

namespace quorvane {

class ShellTarget : public FixTarget, public MessageTarget, public CheckerSide {
 public:
  explicit ShellTarget(Process& process) : process_(process) {}

  bool Do_nsstring_commit_to_composition(const std::u16string& text,
                                         std::uint32_t replaceLength) override;
  void Do_commit_to_composition(const std::uint8_t* bytes, std::uint32_t length,
                                std::uint32_t originalReplace) override;
  void Do_Get_Text_Position(BIMSessionRec* session) override;

  std::uint64_t BIMGetActiveSession() override;
  std::uint32_t documentTag(std::uint64_t session) override;
  void Update_Document_Session(std::uint64_t session) override;
  void commitFix(const std::u16string* text, std::uint32_t replaceLength) override;
  void Post_Paste_CommandKey(std::int32_t pid) override;
  void Post_SpecialPaste_CommandKey(std::int32_t pid) override;

  bool do_handleEvent(const NSEvent& event, IMKTextInput* client) override;
  void do_activateServer1(IMKTextInput* sender) override;
  void do_deactivateServer1(IMKTextInput* sender) override;

 private:
  Process& process_;
};

/// Before anything calls the rooms below. `main` does it first of all; a second time is harmless.
void connectRooms(Process& process);

}  // namespace quorvane
