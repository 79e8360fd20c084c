#pragma once
// The controller that the text-input framework talks to. Each event goes to the checker's side
// first; what that doesn't consume is completion's.

#include <string>
#include <vector>

#include "src/base/Process.h"

namespace quorvane {

struct InputControllerState {
  IMKTextInput* lastClient = nullptr;  ///< this module's own: the client of the latest event
};

class InputController : public IMKInputController {
 public:
  explicit InputController(Process& process) : process_(process) {}

  bool handleEvent(const NSEvent& event, IMKTextInput* client) override;
  void activateServer(IMKTextInput* sender) override;
  void deactivateServer(IMKTextInput* sender) override;
  std::uint32_t recognizedEvents(IMKTextInput* sender) override;

 private:
  Process& process_;
  std::int64_t _currentCandidateIndex = 1;
  std::vector<std::u16string> _candidates;
};

/// The completion switch, 64 or 0: 0 also where interactive checking or the whole menu is off.
std::uint32_t Get_InteractiveCheck_Status(Process& process);
/// True: a popup or a suspended state blocks completion.
bool do_AutoCompleteCancelWindow(Process& process);

}  // namespace quorvane
