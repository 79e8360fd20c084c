#include "hosts/field/CarbonEvents.h"

namespace quorvane::field {

bool CarbonEvents::CreateEvent(FourCharCode eventClass, std::uint32_t kind, Seconds when,
                               CarbonEvent& event) {
  event = {};
  event.eventClass = eventClass;
  event.kind = kind;
  event.time = when;
  return true;
}

std::uint32_t CarbonEvents::GetCurrentKeyModifiers() {
  return application_ != nullptr ? application_->currentKeyModifiers() : 0;
}

void CarbonEvents::GetKeys(KeyMap& keys) {
  keys = application_ != nullptr ? application_->heldKeys() : KeyMap{};
}

}  // namespace quorvane::field
