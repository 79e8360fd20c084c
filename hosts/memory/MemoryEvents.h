#pragma once
// Carbon events and event posting in memory. What is posted goes into the queue of the text-field
// application, which delivers it.

#include <functional>
#include <optional>

#include "hosts/field/EventQueue.h"
#include "hosts/memory/MemoryJournal.h"
#include "platform/CarbonEvents.h"
#include "platform/EventPosting.h"

namespace quorvane::memory {

class MemoryCarbonEvents : public CarbonEvents {
 public:
  explicit MemoryCarbonEvents(MemoryJournal& journal) : journal_(journal) {}

  bool CreateEvent(FourCharCode eventClass, std::uint32_t kind, double when,
                   CarbonEvent& event) override;
  std::uint32_t GetCurrentKeyModifiers() override;
  bool CheckEventQueueForUserCancel() override;

  bool createEventFails = false;
  bool userCancelled = false;
  /// In place of those of the latest event.
  std::optional<std::uint32_t> keyModifiers;
  std::function<std::uint32_t()> latestModifiers = [] { return 0U; };

 private:
  MemoryJournal& journal_;
};

class MemoryEventPosting : public EventPosting {
 public:
  MemoryEventPosting(MemoryJournal& journal, field::EventQueue& queue)
      : journal_(journal), queue_(queue) {}

  std::uint32_t IOServiceOpen() override;
  std::int32_t IOHIDPostEvent(std::uint32_t connection, std::uint32_t type,
                              const NXKeyEventData& data, std::uint32_t version,
                              std::uint32_t flags, std::uint32_t options) override;

  bool serviceOpenFails = false;

 private:
  MemoryJournal& journal_;
  field::EventQueue& queue_;
};

}  // namespace quorvane::memory
