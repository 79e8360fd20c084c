#pragma once
// The sibling processes: the main application, the server and the Pencil Menu. How each is known,
// found, started, woken and stopped; and which application is in front. Finding one allocates
// nothing, so that a key may do it.

#include <span>
#include <string_view>
#include <vector>

#include "src/base/Instance.h"
#include "src/bridge/PrivacyConsentController.h"
#include "src/bridge/SharedLayout.h"

namespace quorvane {

inline constexpr std::string_view kPencilMenuBundleIdentifier = quorvaneMenuletBundleIdentifier;
inline constexpr FourCharCode kPencilMenuSignature = "QVKS"_4cc;
inline constexpr FourCharCode kServerSignature = "QVUI"_4cc;
inline constexpr FourCharCode kSecondEditionSignature = "QVJX"_4cc;  ///< of the main application
inline constexpr FourCharCode kApplicationType = "APPL"_4cc;

struct LaunchServerState {
  ProcessSerialNumber Quorvaneprocess;  ///< working copy of the main application's
  std::int32_t qorvpid = 0;             ///< its process id
  std::int32_t QORVMARPP_IS_RUNNING = 0;
  std::int32_t Penc_pid = 0;               ///< the Pencil Menu's process id
  ProcessSerialNumber PencilMenu_process;  ///< as last found by its signature
  FourCharCode lastFrontSignature = 0;     ///< of isFrontAppSame
  bool launched_busy = false;              ///< a launch is waited for
  std::vector<std::uint8_t> QorvTargetID;  ///< the main application, as an event's address
};

/// Only the signature is compared.
struct ProcessEntry {
  std::uint32_t processType = 0;
  FourCharCode signature = 0;
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
/// 1 with `psn` at the first process that has one of the signatures; 0: there is none.
std::int32_t FINDAPPPROCESS(Instance& instance, ProcessSerialNumber& psn, ProcessInfoRec& info,
                            std::span<const ProcessEntry> entries);
std::int32_t Application_Running(Instance& instance, FourCharCode signature);
std::int32_t GetQORVUISERVERPROCESS(Instance& instance);
/// Of either edition of the main application.
std::int32_t isQORVAPPSIGNATURE_ALL(FourCharCode signature);

// The application in front.

/// 0: its signature is another one than at the last asking.
std::int32_t isFrontAppSame(Instance& instance);
/// 1; 0 where there is none, with `psn` as it was.
std::int32_t Get_FrontProcessSerial(Instance& instance, ProcessSerialNumber& psn);
/// Writes the front application's process id into the record and returns it; 0: none.
std::int32_t Get_FrontApp_AEToolEventSelectStruct(Instance& instance,
                                                  AEToolEventSelectStruct& record);

/// The front application's bundle identifier as a C string, at most 63 bytes and as many as fit;
/// `out` is empty where it has none.
void Get_FRONT_bundleIdentifier(Instance& instance, std::span<std::uint8_t> out);

// Starting the main application. What has been started is waited for with the run loop turning.

/// Not 0 where it runs or was found, whether or not it could be started.
std::int32_t QorvLaunchApp(Instance& instance);
/// 1 where it is installed, by the alias in the preferences or in a folder that it may lie in; what
/// was found in a folder has been started by then. Else 0, and it has been tried at its usual path.
std::int32_t GetApplicationFolder(Instance& instance, FSRef& ref);
/// 1 where the alias in the preferences leads somewhere.
std::int32_t GetSaveAPPVOLParamsHandle(Instance& instance, FSRef& ref);
/// What the launch gives; 0, and nothing happens, within another one.
OSStatus do_Launch(Instance& instance, const FSRef& ref);
void Launch_Quorvane(Instance& instance);

// The server.

/// Starts the main application, then the server, unless the server runs. 0 or why it failed.
OSStatus BIMLaunchServer(Instance& instance);
/// Null: there is none.
OSStatus BIMLaunchWithFSRef(Instance& instance, const FSRef* ref);

// The Pencil Menu.

std::int32_t isPencilMenuRunning(Instance& instance);
std::int32_t Pencil_Menu_Application_Running(Instance& instance);
/// 1 where the workspace has told of it.
std::int32_t GetPencilMenuPROCESS(Instance& instance);
/// Unless it runs.
void LaunchQuorvaneMenulet(Instance& instance);
/// 0 where it isn't running, otherwise what the sending gives.
std::int32_t QuitQuorvaneMenulet(Instance& instance);

/// Keeps the main application's serial number as the target of what follows. procNotFound: it isn't
/// known, and there is no target.
OSStatus GetQuorvaneProcessTargetid(Instance& instance);
/// Asks that target for a property of its own.
OSStatus GetAppProperty(Instance& instance, FourCharCode property,
                        std::vector<std::uint8_t>& reply);
/// Whether the main application's window has the focus, as it says itself; 0 where it doesn't say.
/// Nobody asks yet.
std::uint8_t Get_QorvFocusWindowFlag(Instance& instance);

/// Asks a process to quit, by an Apple event. Despite its name, it takes a serial number.
OSStatus quitApplicationWithBundleID(Instance& instance, const ProcessSerialNumber& value);

}  // namespace quorvane
