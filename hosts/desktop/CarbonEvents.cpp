#include "hosts/desktop/CarbonEvents.h"

namespace quorvane::desktop {

bool CarbonEvents::CreateEvent(FourCharCode eventClass, std::uint32_t kind, double when,
                               CarbonEvent& event) {
  event = {};
  event.eventClass = eventClass;
  event.kind = kind;
  event.time = when;
  return true;
}

}  // namespace quorvane::desktop
