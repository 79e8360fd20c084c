#pragma once
// Apple events between the processes of the family. Of events only the one to quit is known here: a
// SIGTERM.

#include <optional>

#include "hosts/desktop/ConsentFile.h"
#include "hosts/desktop/ProcessRegistry.h"
#include "platform/Alerts.h"
#include "platform/AppleEvents.h"

namespace quorvane::desktop {

class AppleEvents final : public quorvane::AppleEvents {
 public:
  AppleEvents(const ProcessRegistry& registry, ConsentFile consent, quorvane::Alerts& alerts)
      : registry_(registry), consent_(std::move(consent)), alerts_(alerts) {}

  /// The user's consent counts for all events to a target. An answer that somebody gives is kept,
  /// by the bundle identifier; who has none isn't asked about, and not permitted.
  OSStatus AEDeterminePermissionToAutomateTarget(const AEAddressDesc& target,
                                                 FourCharCode eventClass, FourCharCode eventID,
                                                 bool askUserIfNeeded) override;
  /// No application of this host answers it.
  OSStatus AESendGetData(FourCharCode property, const AEAddressDesc& target, std::int32_t mode,
                         std::int32_t timeout, std::vector<std::uint8_t>& reply) override;
  OSStatus AESendMessage(FourCharCode eventClass, FourCharCode eventID, const AEAddressDesc& target,
                         std::int32_t mode, std::int32_t timeout) override;

 private:
  [[nodiscard]] const AnnouncedProcess* find(const AEAddressDesc& target) const;
  std::optional<Consent> ask(const AnnouncedProcess& target);

  const ProcessRegistry& registry_;
  ConsentFile consent_;
  quorvane::Alerts& alerts_;
};

}  // namespace quorvane::desktop
