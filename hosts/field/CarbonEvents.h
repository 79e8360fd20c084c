#pragma once

#include "hosts/field/TextApplication.h"
#include "platform/CarbonEvents.h"

namespace quorvane::field {

class CarbonEvents final : public quorvane::CarbonEvents {
 public:
  bool CreateEvent(FourCharCode eventClass, std::uint32_t kind, Seconds when,
                   CarbonEvent& event) override;
  std::uint32_t GetCurrentKeyModifiers() override;
  void GetKeys(KeyMap& keys) override;
  /// A click is over as soon as it is known of.
  bool Button() override { return false; }
  bool CheckEventQueueForUserCancel() override { return false; }

  /// Whose keys are asked about; until then none is held. It outlives the last question.
  void connect(const TextApplication& application) { application_ = &application; }

 private:
  const TextApplication* application_ = nullptr;
};

}  // namespace quorvane::field
