#include "apps/FrontApplication.h"

#include <unistd.h>

#include "apps/Segment.h"
#include "src/bridge/Presence.h"
#include "tools/checker/ToolRecord.h"

namespace quorvane {

FrontApplication::FrontApplication(desktop::DesktopHost& host, Instance& instance,
                                   const std::filesystem::path& runtimeFolder)
    : host_(host),
      instance_(instance),
      windowFile_(runtimeFolder / "window"),
      client_(::getpid()) {}

bool FrontApplication::mainWindowTakesKeys() {
  if (::access(windowFile_.c_str(), F_OK) != 0 || IsQUORVANEAPPRUNNING(instance_) == 0) {
    return false;
  }
  const Segment segment(host_.platform().sharedMemory, checker::kToolKey);
  return checker::ToolRecord(segment.words()).get(checker::At::AppInput) != 0;
}

bool FrontApplication::update() {
  const std::int32_t pid = mainWindowTakesKeys() ? get_quorvane_pid(instance_) : client_;
  desktop::ProcessRegistry& registry = host_.processRegistry();
  return registry.frontApplication() != pid && registry.setFrontApplication(pid);
}

}  // namespace quorvane
