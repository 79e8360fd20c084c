#pragma once
// Apple events: those sent to other applications, and the user's consent to sending them.

#include <cstdint>
#include <span>
#include <vector>

#include "platform/MacTypes.h"

namespace quorvane {

inline constexpr OSStatus errAEEventNotPermitted = -1743;
inline constexpr OSStatus errAEEventWouldRequireUserConsent = -1744;

inline constexpr FourCharCode typeApplicationBundleID = "bund"_4cc;
inline constexpr FourCharCode typeProcessSerialNumber = "psn "_4cc;
inline constexpr FourCharCode typeWildCard = "****"_4cc;
inline constexpr FourCharCode kCoreEventClass = "aevt"_4cc;
inline constexpr FourCharCode kAEQuitApplication = "quit"_4cc;

/// Whom an event is for; the bytes are the caller's.
struct AEAddressDesc {
  FourCharCode descriptorType = 0;
  std::span<const std::uint8_t> data;
};

class AppleEvents {
 public:
  virtual ~AppleEvents() = default;

  /// 0: permitted; errAEEventNotPermitted; errAEEventWouldRequireUserConsent: not asked yet;
  /// procNotFound: the target doesn't run. With `askUserIfNeeded` it may wait for an answer.
  virtual OSStatus AEDeterminePermissionToAutomateTarget(const AEAddressDesc& target,
                                                         FourCharCode eventClass,
                                                         FourCharCode eventID,
                                                         bool askUserIfNeeded) = 0;
  /// An event without parameters. `mode` 1: no reply; a timeout of -1: the default one.
  virtual OSStatus AESendMessage(FourCharCode eventClass, FourCharCode eventID,
                                 const AEAddressDesc& target, std::int32_t mode,
                                 std::int32_t timeout) = 0;
  /// "core" "getd", of a property of the application itself. `mode` 3: the reply is waited for,
  /// `timeout` ticks at most; it is what `reply` holds afterwards.
  virtual OSStatus AESendGetData(FourCharCode property, const AEAddressDesc& target,
                                 std::int32_t mode, std::int32_t timeout,
                                 std::vector<std::uint8_t>& reply) = 0;
};

}  // namespace quorvane
