#pragma once
// Finding, waking and stopping the sibling processes. Nothing here allocates.

#include <span>
#include <string_view>

#include "src/base/Instance.h"
#include "src/bridge/SharedLayout.h"

namespace quorvane {

inline constexpr std::string_view kPencilMenuBundleIdentifier = "com.tallowmere.menulet";

struct LaunchServerState {
  ProcessSerialNumber Quorvaneprocess;  ///< working copy of the main application's
  std::int32_t qorvpid = 0;             ///< its process id
  std::int32_t QORVMARPP_IS_RUNNING = 0;
  std::int32_t Penc_pid = 0;  ///< the Pencil Menu's process id
};

// The main application.

/// 1 where the serial number is known: then `out`, and `pidOut` unless null, take serial number and
/// id.
std::int32_t get_quorvane_psn(Instance& instance, ProcessSerialNumber& out, std::int32_t* pidOut);
/// A null `pid` leaves the id. Always 0.
std::int32_t set_quorvane_psn(Instance& instance, const ProcessSerialNumber& psn,
                              const std::int32_t* pid);
/// The known serial number, or else the process is looked for and kept. 1 where there is one.
std::int32_t Init_GetQUORVANEPROCESS(Instance& instance);
/// The same, but what is found goes to the working copy only.
std::int32_t GetQUORVANEPROCESS(Instance& instance);
/// `out` may be null.
std::int32_t GetQORVPROCESSRUNNING(Instance& instance, ProcessSerialNumber* out);
/// 0, or what the call gives.
OSStatus WakeUpQuorvaneProcess(Instance& instance);
std::uint8_t Is_QUORVANE_APP_RUNNING(Instance& instance);
/// On its coming and going; 0 detaches from its memory.
void Set_Quorvane_Is_Active(Instance& instance, std::int32_t active);

// Any process.

/// 1 where a process has the signature. A `psn` that has it already stays as it is; otherwise the
/// first one found goes to `psn`, and its id to `pidOut` unless null. A `psn` without
/// that signature is cleared first, and the id with it.
std::int32_t Get_SPECIFIED_PROCESS(Instance& instance, FourCharCode signature,
                                   ProcessSerialNumber& psnInOut, std::int32_t* pidOut);
/// 1 where `psn` isn't all zero and its process has the signature.
std::int32_t Check_appsignature(Instance& instance, FourCharCode signature,
                                const ProcessSerialNumber& psn);
void Set_InfoRec_ProcessInfoRec(Instance& instance, ProcessInfoRec& info);

/// Writes the front application's process id into the record and returns it; 0: none.
std::int32_t Get_FrontApp_AEToolEventSelectStruct(Instance& instance,
                                                  AEToolEventSelectStruct& record);

/// The front application's bundle identifier as a C string, at most 63 bytes and as many as fit;
/// `out` is empty where it has none.
void Get_FRONT_bundleIdentifier(Instance& instance, std::span<std::uint8_t> out);

// The Pencil Menu.

std::int32_t isPencilMenuRunning(Instance& instance);
/// 0 where it isn't running, otherwise what the sending gives.
std::int32_t QuitQuorvaneMenulet(Instance& instance);

}  // namespace quorvane
