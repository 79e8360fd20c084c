#pragma once
// Carbon events and event posting in memory. What is posted goes into the queue of the text-field
// application, which delivers it.

#include <functional>
#include <optional>

#include "hosts/field/EventQueue.h"
#include "hosts/journal/Journal.h"
#include "platform/CarbonEvents.h"
#include "platform/EventPosting.h"

namespace quorvane::memory {

class MemoryCarbonEvents : public CarbonEvents {
 public:
  explicit MemoryCarbonEvents(Journal& journal) : journal_(journal) {}

  bool CreateEvent(FourCharCode eventClass, std::uint32_t kind, Seconds when,
                   CarbonEvent& event) override;
  std::uint32_t GetCurrentKeyModifiers() override;
  void GetKeys(KeyMap& keys) override;
  bool Button() override;
  bool CheckEventQueueForUserCancel() override;

  bool buttonDown = false;
  bool createEventFails = false;
  bool userCancelled = false;
  /// In place of those of the latest event.
  std::optional<std::uint32_t> keyModifiers;
  std::function<std::uint32_t()> latestModifiers = [] { return 0U; };
  std::function<KeyMap()> heldKeys = [] { return KeyMap{}; };

 private:
  Journal& journal_;
};

/// The release of an event or of a source has its line too.
class MemoryEventPosting : public EventPosting {
 public:
  MemoryEventPosting(Journal& journal, field::EventQueue& queue)
      : journal_(journal), queue_(queue) {}

  CGEventSourceRef CGEventSourceCreate(std::int32_t stateID) override;
  CGEventRef CGEventCreate(CGEventSource* source) override;
  CGEventRef CGEventCreateKeyboardEvent(CGEventSource* source, std::uint16_t virtualKey,
                                        bool keyDown) override;
  CGEventRef CGEventCreateMouseEvent(CGEventSource* source, CGEventType type, NSPoint location,
                                     std::uint32_t button) override;
  NSPoint CGEventGetLocation(const CGEvent* event) override;
  void CGEventSetFlags(CGEvent* event, std::uint64_t flags) override;
  void CGEventKeyboardSetUnicodeString(CGEvent* event, std::u16string_view text) override;
  void CGEventPostToPSN(const ProcessSerialNumber& psn, const CGEvent* event) override;
  void CGEventPost(std::uint32_t tap, const CGEvent* event) override;
  void CGInhibitLocalEvents(bool inhibit) override;
  void CGEnableEventStateCombining(bool combine) override;
  std::uint32_t IOServiceOpen() override;
  std::int32_t IOHIDPostEvent(std::uint32_t connection, std::uint32_t type,
                              const NXKeyEventData& data, std::uint32_t version,
                              std::uint32_t flags, std::uint32_t options) override;

  bool serviceOpenFails = false;
  bool creationFails = false;  ///< of events and sources

 private:
  template <class Made>
  std::shared_ptr<Made> noted(std::shared_ptr<Made> made, std::string_view name);

  Journal& journal_;
  field::EventQueue& queue_;
};

}  // namespace quorvane::memory
