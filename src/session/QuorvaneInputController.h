#pragma once
// The session's side of the input method: one controller does all its work, whatever client an
// event comes from. The framework's own object is InputController, which asks this one first.

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "src/base/Instance.h"
#include "src/session/QuorvaneInputController_Commit.h"

namespace quorvane {

/// Left mouse down and up, key down and up, flags changed, other mouse down and up.
inline constexpr std::uint32_t kRecognizedEvents = 0x6001c06;

/// The process globals of event entry and activation.
struct ControllerState {
  std::uint32_t INITED_FLAG = 0;         ///< start-up finished
  std::uint64_t KEYED_INITED_FLAG = 0;   ///< nonzero: the next key down is consumed
  std::uint32_t handleEvent_BUSY = 0;    ///< an event is being handled
  std::uint32_t Event_keyDownEvent = 0;  ///< the latest event was a key without modifiers but shift
  IMKTextInput* lastClient = nullptr;    ///< the client of the latest event

  std::uint32_t is_ACTIVE = 0;  ///< between activation and deactivation
  std::uint32_t activateServer_Inted = 0;
};

/// Of the repeating timers.
struct TimerState {
  bool Mouse_Recurion_Flag = false;
  bool CallQuorvaneMenuIconCheckEventCompletionBusy = false;
  bool Buttonflag = false;  ///< a mouse button was down at the last tick
  std::int32_t lastprocessPID = 0;
};

class QuorvaneInputController : public IMKInputController {
 public:
  explicit QuorvaneInputController(Instance& instance)
      : instance_(instance), commit_(instance.state<CommitState>()) {}

  // Events and focus.
  bool handleEvent(const NSEvent& event, IMKTextInput* client) override;
  void activateServer(IMKTextInput* sender) override;
  void deactivateServer(IMKTextInput* sender) override;
  std::uint32_t recognizedEvents(IMKTextInput* sender) override;
  /// The nib has one controller, which looks after the whole process.
  void awakeFromNib();
  /// Ends the controller: its client's session goes, and those of applications that have gone.
  void dealloc();

  // Housekeeping.
  void Install_Timer();
  void doApplicationTimer();
  void doMouseTimer();
  void NSWorkspaceDidLaunchApplication() {}
  void DidTerminateApplication();
  void ApplicationDidBecomeActive() {}
  void NSApplicationDidHide() {}
  void connectionDidDie();

  // Commit.
  std::u16string& composedBuffer() { return commit_._composedBuffer; }
  std::u16string& originalBuffer() { return commit_._originalBuffer; }
  /// Null is ignored.
  void setComposedBuffer(const std::u16string* text);
  void setOriginalBuffer(const std::u16string* text);
  void originalBufferAppend(const std::u16string& text, IMKTextInput& client);
  /// Inserts what is parked; without a client it stays parked.
  void commitComposition(IMKTextInput* sender) override;
  /// False where there aren't so many characters before the caret: nothing is inserted.
  bool nsstring_commit_to_composition(const std::u16string& text, Utf16Units replaceLength) {
    return Do_nsstring_commit_to_composition(instance_, text, replaceLength);
  }

  // The Input Menu.
  void SubMenuActions(const IMKCommandDictionary& sender);
  bool validateMenuItem(const NSMenuItem& /*item*/) override { return true; }

  // Nothing to do on this side: composition and candidates are completion's.
  void ClearComposedBuffer() {}
  void cancelComposition() {}
  void updateComposition() {}
  void candidateSelected(const NSAttributedString& /*candidate*/) override {}
  void candidateSelectionChanged(const NSAttributedString& /*candidate*/) override {}
  void hidePalettes() {}
  void doCommandBySelector(std::string_view /*selector*/, IMKTextInput* /*client*/) {}
  std::nullptr_t modes(IMKTextInput* /*sender*/) { return nullptr; }

  [[nodiscard]] IMKTextInput* currentClient() const { return _currentClient; }
  [[nodiscard]] std::int64_t insertionIndex() const { return commit_._insertionIndex; }

 private:
  bool dispatch(const NSEvent& event, IMKTextInput* client);
  bool handleInTurn(const NSEvent& event, IMKTextInput* client);
  bool handleKey(const NSEvent& event, IMKTextInput* client);
  bool handleFlagsChanged(const NSEvent& event);

  Instance& instance_;
  CommitState& commit_;  ///< made before the controller, so it outlives it
  IMKTextInput* _currentClient = nullptr;
  std::unique_ptr<Registration> applicationTimer_;
  std::unique_ptr<Registration> mouseTimer_;
  std::array<std::unique_ptr<Registration>, 4> observers_;
};

QuorvaneInputController& Get_QuorvaneInputController(Instance& instance);

bool do_handleEvent(Instance& instance, const NSEvent& event, IMKTextInput* client);
void do_activateServer1(Instance& instance, IMKTextInput* sender);
void do_deactivateServer1(Instance& instance, IMKTextInput* sender);
/// The Carbon record behind the event; null where it has none.
EventRef CreateKeyEventFromNSEvent(const NSEvent& event);
/// Asks whether the main application is in front and ignores the answer. 0.
std::int32_t Send_Complete_Event(Instance& instance, std::int32_t kind, std::uint16_t keyCode,
                                 const std::u16string& characters, IMKTextInput* client);
/// Nothing: what a held key offers is the platform's.
void loadPressAndHold();
void set_INITED_FLAG(Instance& instance, std::uint32_t value);
void cancel_keyDownEvent(Instance& instance);
IMKTextInput* GetLastClient(Instance& instance);
/// The keyboard types into us at present.
bool CHECK_Quorvane_InputMenu(Instance& instance);
/// Another application in front ends a suspension and hides the window. 1: it is the same one.
std::int32_t ProcessSwitch_App_CurrentFront(Instance& instance);
void CallQuorvaneMenuIconCheckEventCompletion(Instance& instance);

}  // namespace quorvane
