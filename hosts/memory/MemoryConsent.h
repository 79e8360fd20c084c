#pragma once
// What a person decides: the answer to an alert, and which applications may be sent Apple events.

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "hosts/journal/Journal.h"
#include "platform/Alerts.h"
#include "platform/AppleEvents.h"

namespace quorvane::memory {

class MemoryAlerts : public Alerts {
 public:
  explicit MemoryAlerts(Journal& journal) : journal_(journal) {}

  int runModal(const NSAlert& alert) override;

  std::optional<int> answer;  ///< empty: nobody answers
  std::vector<NSAlert> shown;

 private:
  Journal& journal_;
};

class MemoryAppleEvents : public AppleEvents {
 public:
  explicit MemoryAppleEvents(Journal& journal) : journal_(journal) {}

  OSStatus AEDeterminePermissionToAutomateTarget(const AEAddressDesc& target,
                                                 FourCharCode eventClass, FourCharCode eventID,
                                                 bool askUserIfNeeded) override;
  OSStatus AESendMessage(FourCharCode eventClass, FourCharCode eventID, const AEAddressDesc& target,
                         std::int32_t mode, std::int32_t timeout) override;

  OSStatus AESendGetData(FourCharCode property, const AEAddressDesc& target, std::int32_t mode,
                         std::int32_t timeout, std::vector<std::uint8_t>& reply) override;

  /// By bundle identifier; any other one doesn't run.
  std::map<std::string, OSStatus, std::less<>> consents;
  OSStatus sendResult = noErr;  ///< also of a get data event
  std::vector<std::uint8_t> reply;

 private:
  Journal& journal_;
};

}  // namespace quorvane::memory
