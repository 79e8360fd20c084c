#pragma once
// Applications that a script has installed, and their launch by the workspace and Launch Services.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosts/memory/MemoryFiles.h"
#include "hosts/memory/MemoryMainApplication.h"
#include "platform/LaunchServices.h"

namespace quorvane::memory {

struct MemoryInstalledApplication {
  std::string path;  ///< of its folder
  MemoryProcess process;
  bool fails = false;                    ///< it can't be started
  std::optional<double> afterTicks = 0;  ///< until it runs; empty: it never does
  std::function<void()> whenItStarts;    ///< once the clock moves
  std::function<void()> whenItRuns;      ///< just before the workspace gets to know
  bool starting = false;
};

class MemoryLaunchServices : public LaunchServices {
 public:
  MemoryLaunchServices(Journal& journal, MemoryClock& clock, MemoryFileManager& files,
                       MemoryProcesses& processes, MemoryMainApplication& mainApplication);
  MemoryLaunchServices(const MemoryLaunchServices&) = delete;
  MemoryLaunchServices& operator=(const MemoryLaunchServices&) = delete;

  OSStatus LSOpenFromRefSpec(const FSRef& ref, std::uint32_t launchFlags) override;
  OSStatus ReceiveNextEvent(FourCharCode eventClass, std::uint32_t kind, Seconds timeout) override;

  // The script's side.
  /// Also its folder. One with the main application's signature is the scripted one.
  void install(MemoryInstalledApplication application);
  /// For changing it; null where there is none at the path.
  MemoryInstalledApplication* find(const std::string& path);
  MemoryInstalledApplication* findSignature(FourCharCode signature);

  /// The host's turning of the run loop until the first one holds, so many nanoseconds at most.
  std::function<bool(const std::function<bool()>&, std::uint64_t)> turnUntil;
  int otherEvents = 0;  ///< so many times a wait ends at once without a launch, as one may

 private:
  bool isRunning(const MemoryInstalledApplication& application) const;
  bool open(const std::string& path);
  void run(const std::string& path);

  Journal& journal_;
  MemoryClock& clock_;
  MemoryFileManager& files_;
  MemoryProcesses& processes_;
  MemoryMainApplication& mainApplication_;
  std::vector<MemoryInstalledApplication> installed_;
  std::string awaited_;   ///< named by the latest LSOpenFromRefSpec
  bool arrived_ = false;  ///< its event
};

}  // namespace quorvane::memory
