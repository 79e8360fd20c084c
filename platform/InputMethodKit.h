#pragma once
// InputMethodKit: the client that holds the text, the controller that gets its events, and the
// server and the candidates panel made at start.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/NSMenu.h"

namespace quorvane {

/// How marked text looks: the style that `markForStyle` was asked for, and where it holds.
struct MarkedTextAttributes {
  std::uint32_t style = 0;
  NSRange range;
  bool operator==(const MarkedTextAttributes&) const = default;
};

/// kTSMHiliteSelectedRawText, for `markForStyle`.
inline constexpr std::uint32_t kSelectedRawText = 3;

/// A text, and its looks where it has any. Any text is one.
struct NSAttributedString {
  NSAttributedString(std::u16string text) : string(std::move(text)) {}  // NOLINT: implicit
  NSAttributedString(const char16_t* text) : string(text) {}            // NOLINT: implicit
  NSAttributedString(std::u16string text, MarkedTextAttributes looks)
      : string(std::move(text)), attributes(looks) {}

  std::u16string string;
  std::optional<MarkedTextAttributes> attributes;
};

/// A text field of some application. Its identity is its address, and the low 32 bits of that are
/// its id. A client stays callable for as long as the host lives, also after its window closed: it
/// then drops what it is told. A host has no event of its own to deliver while a call runs.
class IMKTextInput {
 public:
  virtual ~IMKTextInput() = default;

  /// The selection, or the caret with length 0. Location NSNotFound where there is none.
  virtual NSRange selectedRange() = 0;
  /// Inserts at `replacementRange`; with location NSNotFound over the marked text, or failing that
  /// over the selection; an empty text with nothing marked then leaves the selection as it is. A
  /// range outside the text may be refused: then nothing changes.
  virtual void insertText(const std::u16string& text, NSRange replacementRange) = 0;
  /// Makes `text` the marked text, in place of `replacementRange`. `selectionRange` counts from
  /// the start of the marked text.
  virtual void setMarkedText(const NSAttributedString& text, NSRange selectionRange,
                             NSRange replacementRange) = 0;
  /// The line rectangle of the insertion point in screen coordinates. A client that can't tell
  /// leaves the rectangle as it is.
  virtual void attributesForCharacterIndex(std::uint64_t index, NSRect& lineHeightRectangle) = 0;
};

/// What comes with a menu action: the dictionary of the chosen item.
struct IMKCommandDictionary {
  NSMenuItem* IMKCommandMenuItem = nullptr;
  std::u16string IMKMenuTitle;
};

/// What the framework calls for the client that has the focus.
class IMKInputController {
 public:
  virtual ~IMKInputController() = default;

  /// True: consumed, the client must not see the event.
  virtual bool handleEvent(const NSEvent& event, IMKTextInput* client) = 0;
  virtual void activateServer(IMKTextInput* sender) = 0;
  virtual void deactivateServer(IMKTextInput* sender) = 0;
  /// Bit n set: events of type n are wanted.
  virtual std::uint32_t recognizedEvents(IMKTextInput* sender) = 0;

  /// What the candidates panel is to show; asked by the panel only.
  virtual std::vector<std::u16string> candidates(IMKTextInput* /*sender*/) { return {}; }
  /// The panel's highlight has come to stand on a candidate, the first one after opening included.
  virtual void candidateSelectionChanged(const NSAttributedString& /*candidate*/) {}
  /// A candidate was picked in the panel.
  virtual void candidateSelected(const NSAttributedString& /*candidate*/) {}
  /// Null: the text field has made the marked text its own, and there is nothing to insert.
  virtual void commitComposition(IMKTextInput* /*sender*/) {}

  /// The Input Menu; null: none.
  virtual NSMenu* menu() { return nullptr; }
  /// Of an item that has an action: whether it may be chosen.
  virtual bool validateMenuItem(const NSMenuItem& /*item*/) { return true; }
  /// An item of that action was chosen.
  virtual void doCommandBySelectorCommandDictionary(
      std::string_view /*selector*/, const IMKCommandDictionary& /*infoDictionary*/) {}
};

struct IMKServer {
  std::string name;
  std::string bundleIdentifier;
};

enum class IMKCandidatePanelType { SingleColumnScrolling = 1, SingleRowStepping = 3 };

/// For `show`: the panel stands below the text.
inline constexpr std::uint32_t kIMKLocateCandidatesBelowHint = 2;

/// The candidates panel. It serves the controller that has the focus, whoever calls it: asks that
/// one for the list and tells it of every new highlight. A new list in a visible panel, and the
/// opening with a list, put the highlight on the first candidate. Moves stop at both ends and do
/// nothing in a hidden panel.
class IMKCandidates {
 public:
  virtual ~IMKCandidates() = default;

  [[nodiscard]] virtual IMKCandidatePanelType panelType() const = 0;
  /// Asks the controller for `candidates`.
  virtual void updateCandidates() = 0;
  /// The list itself, without asking.
  virtual void setCandidateData(const std::vector<std::u16string>& candidates) = 0;
  virtual void show(std::uint32_t locationHint) = 0;
  virtual void hide() = 0;
  [[nodiscard]] virtual bool isVisible() const = 0;
  virtual void clearSelection() = 0;
  virtual void moveDown(IMKInputController* sender) = 0;
  virtual void moveUp(IMKInputController* sender) = 0;
  virtual void moveLeft(IMKInputController* sender) = 0;
  virtual void moveRight(IMKInputController* sender) = 0;
  /// In screen points. All zero before the first opening.
  [[nodiscard]] virtual NSRect candidateFrame() const = 0;
};

class InputMethodKit {
 public:
  virtual ~InputMethodKit() = default;

  /// Null where the connection name can't be served.
  virtual std::unique_ptr<IMKServer> initWithName(std::string_view name,
                                                  std::string_view bundleIdentifier) = 0;
  /// Null where no panel can be made. `server` may be null.
  virtual std::unique_ptr<IMKCandidates> initWithServer(IMKServer* server,
                                                        IMKCandidatePanelType panelType) = 0;
  /// -[IMKInputController cancelComposition]: takes away the marked text of the client that
  /// `controller` serves. Nothing happens where it serves none or nothing is marked.
  virtual void cancelComposition(IMKInputController& controller) = 0;
  /// -[IMKInputController markForStyle:atRange:].
  virtual MarkedTextAttributes markForStyle(IMKInputController& controller, std::uint32_t style,
                                            NSRange range) = 0;
  /// What clients have been given so far during the event under way was owed to them from before:
  /// should the controller throw, only what follows counts as the event's own text.
  virtual void ownTextFollows() = 0;
};

}  // namespace quorvane
