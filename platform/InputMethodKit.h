#pragma once
// InputMethodKit: the client that holds the text, the controller that gets its events, and the
// server objects made at start.

#include <memory>
#include <string>
#include <string_view>

#include "platform/AppKitEvents.h"

namespace quorvane {

/// A text field of some application. Its identity is its address, and the low 32 bits of that are
/// its id. A client stays callable for as long as the host lives, also after its window closed: it
/// then drops what it is told.
class IMKTextInput {
 public:
  virtual ~IMKTextInput() = default;

  /// The selection, or the caret with length 0. Location NSNotFound where there is none.
  virtual NSRange selectedRange() = 0;
  /// Inserts at `replacementRange`; with location NSNotFound over the marked text, or failing that
  /// over the selection. A range outside the text may be refused: then nothing changes.
  virtual void insertText(const std::u16string& text, NSRange replacementRange) = 0;
  /// Makes `text` the marked text, in place of `replacementRange`. `selectionRange` counts from
  /// the start of the marked text.
  virtual void setMarkedText(const std::u16string& text, NSRange selectionRange,
                             NSRange replacementRange) = 0;
  /// The line rectangle of the insertion point in screen coordinates. A client that can't tell
  /// leaves the rectangle as it is.
  virtual void attributesForCharacterIndex(std::uint64_t index, NSRect& lineHeightRectangle) = 0;
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
};

struct IMKServer {
  std::string name;
  std::string bundleIdentifier;
};

enum class IMKCandidatePanelType { SingleColumnScrolling = 1, SingleRowStepping = 3 };

struct IMKCandidates {
  IMKCandidatePanelType panelType;
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
};

}  // namespace quorvane
