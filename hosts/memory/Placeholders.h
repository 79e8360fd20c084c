#pragma once
// Holds the place of what the memory host says of launching.

#include "platform/Alerts.h"
#include "platform/AppleEvents.h"
#include "platform/LaunchServices.h"

namespace quorvane::memory {

struct NoAlerts : Alerts {
  int runModal(const NSAlert& alert) override {
    return NSAlertFirstButtonReturn + static_cast<int>(alert.buttons.size()) - 1;
  }
};

struct NoAppleEvents : AppleEvents {
  OSStatus AEDeterminePermissionToAutomateTarget(const AEAddressDesc& /*target*/,
                                                 FourCharCode /*eventClass*/,
                                                 FourCharCode /*eventID*/,
                                                 bool /*askUserIfNeeded*/) override {
    return procNotFound;
  }
  OSStatus AESendMessage(FourCharCode /*eventClass*/, FourCharCode /*eventID*/,
                         const AEAddressDesc& /*target*/, std::int32_t /*mode*/,
                         std::int32_t /*timeout*/) override {
    return procNotFound;
  }
};

struct NoLaunchServices : LaunchServices {
  OSStatus LSOpenFromRefSpec(const FSRef& /*ref*/, std::uint32_t /*launchFlags*/) override {
    return kLSUnknownErr;
  }
  OSStatus ReceiveNextEvent(FourCharCode /*eventClass*/, std::uint32_t /*kind*/,
                            Seconds /*timeout*/) override {
    return eventLoopTimedOutErr;
  }
};

}  // namespace quorvane::memory
