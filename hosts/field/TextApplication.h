#pragma once
// An application with text fields, driven by an input method: the way of a key from the keyboard to
// the input method and, where that passes it on, to the document.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/field/Document.h"
#include "hosts/field/EventBoundary.h"
#include "hosts/field/EventQueue.h"
#include "platform/Clock.h"

namespace quorvane::field {

struct Delivery {
  bool withEventRef = true;       ///< false: a host without Carbon records
  bool repeat = false;            ///< a key down is a repetition
  std::optional<Seconds> time{};  ///< when it happened; empty: now
};

/// What a trace is told once an event is over.
struct EventReport {
  const NSEvent& event;
  Outcome outcome;
  std::span<const std::string> clientCalls;  ///< in order, each as `describe` writes it
  bool posted = false;                       ///< it came out of the queue
};

/// Told of each event around its handling by the controller. One event may lie within another.
class EventWatch {
 public:
  virtual ~EventWatch() = default;
  virtual void begins(const NSEvent& event) = 0;
  virtual void ends(const NSEvent& event, Outcome outcome) = 0;
};

class TextApplication {
 public:
  /// How many posted events one event may bring along; what is above it is dropped and recorded.
  static constexpr std::size_t kPostedEventLimit = 4096;

  /// All references outlive the application.
  TextApplication(Clock& clock, LogSink& log, EventQueue& queue,
                  std::shared_ptr<Clipboard> clipboard = std::make_shared<MemoryClipboard>());
  TextApplication(const TextApplication&) = delete;
  TextApplication& operator=(const TextApplication&) = delete;

  /// Null: nobody handles events, all of them are passed on. Not owned.
  void setController(IMKInputController* controller);
  [[nodiscard]] IMKInputController* controller() const { return boundary_.controller(); }
  /// A call that the host makes outside an event. What it throws is recorded; what it posts is
  /// delivered. Nothing happens without a controller.
  void callController(const std::function<void(IMKInputController&)>& call);

  /// Lives as long as the application, also when closed. The first one gets no focus by itself.
  Document& addDocument() { return addDocument(std::make_unique<Document>(clipboard_)); }
  Document& addDocument(std::unique_ptr<Document> document);
  [[nodiscard]] std::span<const std::unique_ptr<Document>> documents() const { return documents_; }
  /// What the controller gets for this document.
  [[nodiscard]] Client& clientOf(const Document& document) const;
  /// Null where nothing has the focus.
  [[nodiscard]] Document* focused() const { return focused_; }
  [[nodiscard]] Client* focusedClient() const { return focused_ ? &clientOf(*focused_) : nullptr; }
  /// Deactivates the old document, whose marked text then becomes plain text, activates the new
  /// one, and delivers what was posted by that. Null takes the focus away. Nothing happens where
  /// the document has it already.
  void focus(Document* document);

  /// Key down and key up at one time, which is now where none is given: a key that was handled for
  /// long wasn't held for long. The outcome is that of the key down.
  Outcome press(std::u16string_view characters, std::uint16_t keyCode,
                std::uint32_t modifierFlags = 0, std::optional<Seconds> time = {});
  /// Presses the key that makes the character, or that is named by a classic code (13, 28 ...),
  /// with `modifierFlags` in addition to those that it needs. A line feed is the return key.
  Outcome type(char32_t character, std::uint32_t modifierFlags = 0,
               std::optional<Seconds> time = {});
  /// Mouse down and up at a place in the text: passed on, it sets the caret there.
  Outcome click(std::uint64_t index);

  /// One event: to the controller, then to the document unless consumed, then everything posted
  /// meanwhile, in order. From within another delivery it goes the same way, and what was posted
  /// waits until the outermost one has returned. Without focus the event is dropped: PassedOn.
  Outcome deliver(const NSEvent& event) { return deliver(event, delivery); }
  Outcome deliver(const NSEvent& event, const Delivery& how);
  /// Delivers what was posted outside any event, by a message for instance.
  void deliverPosted();
  [[nodiscard]] bool delivering() const { return progress_ != nullptr; }
  [[nodiscard]] EventBoundary& boundary() { return boundary_; }

  [[nodiscard]] Clipboard& clipboard() { return *clipboard_; }
  /// Modifiers of the latest event in the classic mask.
  [[nodiscard]] std::uint32_t currentKeyModifiers() const { return modifiers_; }
  /// The keys that are down, posted ones aside.
  [[nodiscard]] const KeyMap& heldKeys() const { return heldKeys_; }
  /// What went wrong: exceptions of the controller and floods of posted events; the latest hundred.
  [[nodiscard]] const std::vector<std::string>& errors() const { return boundary_.errors(); }

  Delivery delivery;  ///< for every event that isn't delivered with its own
  std::function<void(const EventReport&)> trace;
  EventWatch* watch = nullptr;  ///< null: nobody; of events that no person made neither
  /// Told of each client call on any document just before it is carried out.
  std::function<void(const ClientCall&)> onClientCall;

 private:
  struct Progress;
  void noteClientCall(const ClientCall& call);
  void askRecognizedEvents();
  [[nodiscard]] CarbonEvent carbonEvent(const NSEvent& event, const Delivery& how);
  Outcome handle(const NSEvent& event, const Delivery& how, bool posted);
  void noteHeldKey(const NSEvent& event);
  Outcome offer(NSEvent event, const Delivery& how, Client& client);
  void passOn(const NSEvent& event, Document& document, CopiedFor whom);

  Clock& clock_;
  EventQueue& queue_;
  EventBoundary boundary_;
  std::shared_ptr<Clipboard> clipboard_;
  std::vector<std::unique_ptr<Document>> documents_;
  std::vector<std::unique_ptr<Client>> clients_;  ///< of the documents, in their order
  Document* focused_ = nullptr;
  std::uint32_t recognizedEvents_ = 0;
  std::uint32_t modifiers_ = 0;
  KeyMap heldKeys_{};
  std::optional<std::uint64_t> clickIndex_;  ///< while a click is under way
  Progress* progress_ = nullptr;             ///< the innermost event being handled
};

}  // namespace quorvane::field
