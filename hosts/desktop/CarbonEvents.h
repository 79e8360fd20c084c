#pragma once

#include "platform/CarbonEvents.h"

namespace quorvane::desktop {

class CarbonEvents final : public quorvane::CarbonEvents {
 public:
  bool CreateEvent(FourCharCode eventClass, std::uint32_t kind, double when,
                   CarbonEvent& event) override;
  std::uint32_t GetCurrentKeyModifiers() override { return modifiers_; }
  bool CheckEventQueueForUserCancel() override { return false; }

  /// Told by the host that delivers keys, in the classic mask.
  void setCurrentKeyModifiers(std::uint32_t modifiers) { modifiers_ = modifiers; }

 private:
  std::uint32_t modifiers_ = 0;
};

}  // namespace quorvane::desktop
