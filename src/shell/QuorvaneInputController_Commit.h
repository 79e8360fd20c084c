#pragma once
// The ways by which the rest of the system reaches the commit: text into the last client, or parked
// behind a harmless key press until an event brings a client along.

#include "src/bridge/QBIMMessageReceive.h"
#include "src/session/QBIM_IMK_Interactive.h"

namespace quorvane {

/// String path: direct where a client has been seen, parked otherwise.
void Do_nsstring_commit_to_composition(Process& process, const std::u16string& text,
                                       std::uint32_t replaceLength);
/// Byte path: always parks. The bytes are UTF-8.
void Do_commit_to_composition(Process& process, const std::uint8_t* bytes, std::uint32_t length,
                              std::uint32_t originalReplace);
void WakeUpFront(Process& process);

/// Hands the rooms below what they ask of this one.
class ShellTarget : public FixTarget, public MessageTarget {
 public:
  explicit ShellTarget(Process& process) : process_(process) {}

  void Do_nsstring_commit_to_composition(const std::u16string& text,
                                         std::uint32_t replaceLength) override;
  void Do_commit_to_composition(const std::uint8_t* bytes, std::uint32_t length,
                                std::uint32_t originalReplace) override;
  void Do_Get_Text_Position(BIMSessionRec* session) override;
  std::uint64_t BIMGetActiveSession() override;
  std::uint32_t documentTag(std::uint64_t session) override;
  void Update_Document_Session(std::uint64_t session) override;

 private:
  Process& process_;
};

}  // namespace quorvane
