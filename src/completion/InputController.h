#pragma once
// The controller that the text-input framework talks to. Each event goes to the session's side
// first; what that doesn't consume is completion's. The word being typed is marked text of the
// client; nothing reaches the document until a commit.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "src/base/Instance.h"
#include "src/session/WordInProgress.h"

namespace quorvane {

class AnnotationWinController;

struct InputControllerState {
  IMKTextInput* lastClient = nullptr;  ///< this module's own: the client of the latest event
};

class InputController : public IMKInputController, public WordInProgress {
 public:
  explicit InputController(Instance& instance);
  ~InputController() override;
  InputController(const InputController&) = delete;
  InputController& operator=(const InputController&) = delete;
  /// An instance of nobody's client, made on first use.
  static InputController& sharedServer(Instance& instance);

  // Events and focus.
  bool handleEvent(const NSEvent& event, IMKTextInput* client) override;
  void activateServer(IMKTextInput* sender) override;
  void deactivateServer(IMKTextInput* sender) override;
  std::uint32_t recognizedEvents(IMKTextInput* sender) override;

  /// Throws std::out_of_range, with no buffer changed and no client called, where the key has no
  /// characters or a digit names no candidate: the host's event boundary then passes the key on.
  bool onKeyEvent(const NSEvent& event, IMKTextInput* client);
  bool useKey(const NSEvent& event, IMKTextInput* client);
  /// One letter back, and any choice in the panel is dropped. False: there was none.
  bool deleteBackward(IMKTextInput* client);
  /// The place in the list that a digit takes, now that a highlight may have been moved; one
  /// outside the list where it takes none.
  [[nodiscard]] std::size_t candidateOfDigit(std::int64_t digit) const;
  /// Completion leaves keys alone, after a tap of Shift.
  [[nodiscard]] bool defaultEnglishMode() const { return _defaultEnglishMode; }
  /// From 10.14 on the panel's arrows and digits are handled here.
  [[nodiscard]] bool isMojaveAndLaterSystem() const;

  // What a commit inserts, and what was typed, in the user's case. UTF-16 units.
  std::u16string& composedBuffer() { return _composedBuffer; }
  std::u16string& originalBuffer() { return _originalBuffer; }
  void setComposedBuffer(const std::u16string& text) { _composedBuffer = text; }
  void setOriginalBuffer(const std::u16string& text) { _originalBuffer = text; }
  void appendToComposedBuffer(const std::u16string& text) { _composedBuffer += text; }
  void originalBufferAppend(const std::u16string& text, IMKTextInput* client);
  /// Shows the text as marked text of the client of the latest key.
  void showPreeditString(const std::u16string& text);

  // Ends of a word. All but the first leave the controller idle.
  void cancelComposition();
  void commitComposition(IMKTextInput* sender) override;
  void commitComposition_withoutspace(IMKTextInput* sender);
  /// The word in progress stands in the document as it was typed, whatever is highlighted, before
  /// somebody else writes there. Nothing happens without one.
  void keepTyped() override;
  [[nodiscard]] const std::u16string& typed() const override { return _originalBuffer; }
  void do_CancelAutoCompleteSession();
  void do_Cancel_AutoCompleteSession_withoutspace();
  void reset();

  // The panel's side.
  std::vector<std::u16string> candidates(IMKTextInput* sender) override;
  void candidateSelectionChanged(const NSAttributedString& candidate) override;
  void candidateSelected(const NSAttributedString& candidate) override;
  void showAnnotation(const NSAttributedString& candidate);
  /// Top left corner for the annotation window, in the coordinates of the client's line.
  NSPoint calculatePositionOfTranslationWindow();

  // The Input Menu.
  NSMenu* menu() override;
  /// An action that isn't known does nothing.
  void doCommandBySelectorCommandDictionary(std::string_view selector,
                                            const IMKCommandDictionary& infoDictionary) override;
  void SubMenuActions(const IMKCommandDictionary& sender);
  void Set_SubMenuActions(const void* sender, NSMenuItem& item);
  void showIMEPreferences(const void* sender);
  void openUrl(const std::string& address);

 private:
  // Events.
  bool sessionTakes(const NSEvent& event, IMKTextInput* client);
  bool mayComplete();
  [[nodiscard]] bool isSwitchedOn() const;
  bool givesWay();
  bool dispatch(const NSEvent& event, IMKTextInput* client);
  [[nodiscard]] bool isRepeatedFlagsChange(const NSEvent& event) const;
  [[nodiscard]] bool isShiftTap(const NSEvent& event) const;
  void toggleEnglishMode(IMKTextInput* client);
  void remember(const NSEvent& event);

  // Keys: each action returns true where it has consumed the key.
  struct KeyRow;
  static const std::array<KeyRow, 7> kKeyRows;
  bool passOn(const NSEvent& event, IMKTextInput* client);
  bool deleteLetter(const NSEvent& event, IMKTextInput* client);
  bool commitByReturn(const NSEvent& event, IMKTextInput* client);
  bool commitBySpace(const NSEvent& event, IMKTextInput* client);
  bool keepWord(const NSEvent& event, IMKTextInput* client);
  bool acceptLetter(const NSEvent& event, IMKTextInput* client);
  bool commitWithCharacters(const NSEvent& event, IMKTextInput* client);
  bool selectByDigit(const NSEvent& event, IMKTextInput* client);
  /// From 10.14 on. None: the key is neither, or a digit without a panel.
  std::optional<bool> arrowOrDigit(const NSEvent& event, IMKTextInput* client);
  bool moveInPanel(std::uint16_t keyCode);
  void refreshPanel();

  void _updateComposedBuffer(const NSAttributedString& candidate);
  [[nodiscard]] const std::u16string& chosenText() const;
  [[nodiscard]] bool takesSpace(const std::u16string& text) const;
  void insertAndReset(const std::u16string& text, IMKTextInput* sender);
  void losePlaceInSession();
  /// A switch of the user defaults; false before they have been set.
  [[nodiscard]] bool preference(std::string_view key) const;
  /// Null before the start.
  [[nodiscard]] IMKCandidates* sharedCandidates() const;
  [[nodiscard]] bool panelVisible() const;

  Instance& instance_;
  WordInProgressState& words_;  ///< made before the controller, so it outlives it
  std::u16string _composedBuffer;
  std::u16string _originalBuffer;
  std::int64_t _insertionIndex = 0;
  std::int64_t _currentCandidateIndex = 1;
  std::vector<std::u16string> _candidates;
  bool _defaultEnglishMode = false;
  IMKTextInput* _currentClient = nullptr;
  std::u16string _keyText;  ///< what the session has made of the key under way
  // Of the two events before this one, the newer at index 1.
  std::array<std::uint64_t, 2> _lastModifiers{};
  std::array<std::uint64_t, 2> _lastEventTypes{};
  AnnotationWinController* _annotationWin = nullptr;
};

/// The completion switch, 64 or 0: 0 also where interactive checking or the whole menu is off.
std::uint32_t Get_InteractiveCheck_Status(Instance& instance);
/// True: a popup or a suspended state blocks completion.
bool do_AutoCompleteCancelWindow(Instance& instance);

/// An instance of its own, for the functions below: its buffers are not those of the controller
/// that a client talks to.
InputController& get_InputController_ptr(Instance& instance);
void CancelAutoCompleteSession(Instance& instance);
/// The automatic completion has just been switched off: closes the panel if it shows.
void Cancel_AutoCompleteSession_withoutspace(Instance& instance);
IMKTextInput* Get_Last_Client(Instance& instance);

}  // namespace quorvane
