// Starting and stopping the siblings.

#include <algorithm>
#include <cstring>

#include "src/base/Log.h"
#include "src/bridge/BIM_str.h"
#include "src/bridge/NSFileManager_search.h"
#include "src/bridge/Presence.h"
#include "src/bridge/PrivacyConsentController.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/ResFile.h"

namespace quorvane {
namespace {

constexpr std::string_view kAsterisks = "**********************************************";
constexpr const char* kUsualPath = "/Applications/Quorvane ARC7 X/Quorvane.app";
constexpr FourCharCode kAliasType = "QLOC"_4cc;
constexpr std::int16_t kAliasID = 128;

constexpr std::uint32_t kLaunchInBackground = 0x10301;  // asynchronous, no switch, not in recents
constexpr std::uint32_t kLaunchServer = 0xB01;          // no switch, not in recents
constexpr Seconds kLaunchRound{30};
constexpr int kMostRounds = 100;  // that end for another reason

constexpr std::size_t kLongestPath = 128;  // bytes
constexpr std::size_t kLongestServerPath = 160;
constexpr OSStatus kServerNotFound = -2;
constexpr std::int32_t kNoReply = 1;
constexpr std::int32_t kDefaultTimeout = -1;

/// A sibling in SharedSupport, and what the log says of it.
struct Sibling {
  std::string_view name;
  std::string_view embedded, launched, failed, notFound;
};
constexpr Sibling kServer{
    "QuorvaneServer", "*********  Quorvane Server embedded in Resource/SharedSupport",
    "Quorvane Server NSWorkspace launch-Application", "*********  Quorvane Server failed to launch",
    "Quorvane Server NOT FOUND"};
constexpr Sibling kMenulet{
    "Quorvane_menulet", "*********  Quorvane Menulet embedded in Resource/SharedSupport",
    "Quorvane Menulet NSWorkspace launch-Application",
    "*********  Quorvane Menulet failed to launch", "Quorvane Menulet NOT FOUND"};

/// Empty where it takes more bytes than that, or leads nowhere.
std::string pathOf(Instance& instance, const FSRef& ref, std::size_t longest) {
  std::string path;
  instance.platform().fileManager.FSRefMakePath(ref, path);
  return path.size() <= longest ? path : std::string();
}

/// An empty path fails unasked.
void launchPath(Instance& instance, const std::string& path, std::string_view launched,
                std::string_view failed) {
  const bool starts = !path.empty() && instance.platform().workspace.launchApplication(path);
  Log(instance, starts ? launched : failed);
}

/// Where the sibling lies: what is embedded counts before what lies in `sharedSupport`.
bool findSibling(Instance& instance, const Sibling& sibling,
                 std::optional<std::string> sharedSupport, FSRef& ref) {
  Platform& platform = instance.platform();
  auto path = platform.bundle.pathForResource(sibling.name, "app", "SharedSupport");
  if (path) {
    Log(instance, sibling.embedded);
  } else if (sharedSupport) {
    path = sharedSupport->append("/").append(sibling.name).append(".app");
  }
  return path && platform.fileManager.CFURLGetFSRef(*path, ref);
}

void prepareByIdentifier(Instance& instance, FSRef& ref) {
  Platform& platform = instance.platform();
  const auto path = platform.bundle.CFBundleGetBundleWithIdentifier(kQuorvaneBundleIdentifier);
  if (path) platform.fileManager.CFURLGetFSRef(*path, ref);
}

/// In the folder of the user's applications, unless it says a whole path.
bool resolveAlias(Instance& instance, const Handle& alias, FSRef& ref) {
  Platform& platform = instance.platform();
  FSRef applications;
  const bool based = platform.fileManager.FSFindFolder(kUserDomain, kApplicationsFolderType,
                                                       applications) == noErr;
  platform.resourceManager.DetachResource(alias);
  return platform.fileManager.FSResolveAlias(based ? &applications : nullptr, alias->content,
                                             ref) == noErr;
}

void launchFound(Instance& instance, const FSRef& ref) {
  Print_path(instance, ref);
  launchPath(instance, pathOf(instance, ref, kLongestPath),
             "GetApplicationFolder:   Quorvane NSWorkspace launch-Application",
             "Quorvane failed to launch");
}

/// A round that ends for another reason than launch or timeout is followed by the next one.
void awaitLaunch(Instance& instance) {
  LaunchServices& services = instance.platform().launchServices;
  for (int round = 0; round < kMostRounds; ++round) {
    const OSStatus status = services.ReceiveNextEvent(kEventClassApplication,
                                                      kEventAppLaunchNotification, kLaunchRound);
    if (status == noErr || status == eventLoopTimedOutErr) return;
  }
}

}  // namespace

std::int32_t QorvLaunchApp(Instance& instance) {
  Log(instance, "QorvLaunchApp");
  if (GetQORVPROCESSRUNNING(instance, nullptr) != 0) return 1;
  FSRef ref;
  if (GetApplicationFolder(instance, ref) == 0) return 0;
  do_Launch(instance, ref);
  requestPrivacyAndSecurityQorvAppMenuPermission();
  return 1;
}

std::int32_t GetApplicationFolder(Instance& instance, FSRef& ref) {
  prepareByIdentifier(instance, ref);
  if (GetSaveAPPVOLParamsHandle(instance, ref) != 0) {
    Log(instance, kAsterisks);
    Log(instance, "Quorvane Alias launch-Application");
    Log(instance, kAsterisks);
    return 1;
  }
  if (ScanforApplicationFile(instance, ref) != 0) {
    launchFound(instance, ref);
    return 1;
  }
  Launch_Quorvane(instance);
  return 0;
}

std::int32_t GetSaveAPPVOLParamsHandle(Instance& instance, FSRef& ref) {
  Platform& platform = instance.platform();
  FSRef preferences;
  if (platform.fileManager.FSFindFolder(kUserDomain, kPreferencesFolderType, preferences) !=
          noErr ||
      ScanforQorvPrefFile(instance, preferences) == 0) {
    return 0;
  }
  const CurrentResFile file(instance, [&](Instance& opening) {
    return Do_FS_OpenResFile(opening, preferences, fsCurPerm);
  });
  if (!file) return 0;
  const Handle alias = platform.resourceManager.Get1Resource(kAliasType, kAliasID);
  const bool resolved = GetHandleSize(alias) > 0 && resolveAlias(instance, alias, ref);
  Disposblock(instance, alias);
  return resolved ? 1 : 0;
}

OSStatus do_Launch(Instance& instance, const FSRef& ref) {
  Log(instance, "do_Launch");
  bool& busy = instance.state<LaunchServerState>().launched_busy;
  if (busy) return noErr;
  OSStatus status = noErr;
  {
    const FlagGuard launching(busy);
    Log(instance, "Launch started");
    status = instance.platform().launchServices.LSOpenFromRefSpec(ref, kLaunchInBackground);
    if (status == noErr) awaitLaunch(instance);
  }
  Log(instance, "Launched");
  return status;
}

void Launch_Quorvane(Instance& instance) {
  launchPath(instance, kUsualPath, "Launch_Quorvane:  Quorvane NSWorkspace launch-Application",
             "Quorvane failed to launch");
}

OSStatus BIMLaunchServer(Instance& instance) {
  if (GetQORVUISERVERPROCESS(instance) != 0) return noErr;
  QorvLaunchApp(instance);
  Bundle& bundle = instance.platform().bundle;
  FSRef ref;
  const auto support = bundle.CFBundleCopySharedSupportURL(quorvaneInputBundleIdentifier);
  if (!findSibling(instance, kServer, support, ref)) return kServerNotFound;
  return BIMLaunchWithFSRef(instance, &ref);
}

OSStatus BIMLaunchWithFSRef(Instance& instance, const FSRef* ref) {
  if (ref != nullptr) {
    const std::string path = pathOf(instance, *ref, kLongestServerPath);
    Log(instance, "**** Quorvane Server: ", path);
    launchPath(instance, path, kServer.launched, kServer.failed);
  } else {
    Log(instance, kServer.notFound);
  }
  return instance.platform().launchServices.LSOpenFromRefSpec(ref != nullptr ? *ref : FSRef{},
                                                              kLaunchServer);
}

void LaunchQuorvaneMenulet(Instance& instance) {
  if (isPencilMenuRunning(instance) != 0) return;
  FSRef ref;
  const auto support = instance.platform().bundle.CFBundleCopySharedSupportURL();
  if (!findSibling(instance, kMenulet, support, ref)) return Log(instance, kMenulet.notFound);
  std::string path = pathOf(instance, ref, kLongestPath);
  if (std::ranges::any_of(path, [](unsigned char byte) { return byte >= 0x80; })) path.clear();
  launchPath(instance, path, kMenulet.launched, kMenulet.failed);
}

std::int32_t QuitQuorvaneMenulet(Instance& instance) {
  return isPencilMenuRunning(instance) != 0 ? BIMQuitMenulet(instance) : 0;
}

OSStatus quitApplicationWithBundleID(Instance& instance, const ProcessSerialNumber& value) {
  std::array<std::uint8_t, sizeof value> bytes;
  std::memcpy(bytes.data(), &value, bytes.size());
  return instance.platform().appleEvents.AESendMessage(kCoreEventClass, kAEQuitApplication,
                                                       {typeProcessSerialNumber, bytes}, kNoReply,
                                                       kDefaultTimeout);
}

}  // namespace quorvane
