#pragma once
// Is the main application running, and what is in front? Answered from process globals that the
// workspace's notifications and the lookups of QBIMLaunchServer keep current.

#include <string_view>

#include "src/base/Instance.h"

namespace quorvane {

inline constexpr FourCharCode kQuorvaneSignature = "QVPX"_4cc;
inline constexpr std::string_view kQuorvaneBundleIdentifier = "com.tallowmere.quorvane";

struct PresenceState {
  ProcessSerialNumber quorvane_psn;
  std::int32_t quorvane_pid = 0;  ///< 0: unknown
  std::int32_t front_app_pid = 0;
  FourCharCode frontapp_signature = 0;  ///< 0: not yet known, or the application has none
  ProcessSerialNumber frontapp_psn;     ///< as last announced by the workspace
  ProcessSerialNumber frontPSN;         ///< as FRONTPROCESSSIGNATURE last asked
};

/// A serial number counts only as a whole.
[[nodiscard]] constexpr bool isKnown(const ProcessSerialNumber& psn) {
  return psn.highLongOfPSN != 0 && psn.lowLongOfPSN != 0;
}

/// 1 where the serial number is known or, from 10.7 on, a running application has the bundle
/// identifier.
std::int32_t IsQUORVANEAPPRUNNING(Instance& instance);
/// 0 where it isn't running. Found once, then kept.
std::int32_t get_quorvane_pid(Instance& instance);
/// 1 where the main application is in front, and also where neither is known.
std::int32_t isQUORVANEAPP_FRONT(Instance& instance);
std::int32_t isQUORVANEFRONTAPP(Instance& instance);
std::int32_t get_frontapp_pid(Instance& instance);
/// Signature of the front application; 0 where it can't be had.
FourCharCode FRONTPROCESSSIGNATURE(Instance& instance);
FourCharCode GetCurrentAppSignature(Instance& instance);

}  // namespace quorvane
