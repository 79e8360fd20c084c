#include "hosts/desktop/DesktopHost.h"

namespace quorvane::desktop {

DesktopHost::DesktopHost(const DesktopConfiguration& configuration, EventPosting& eventPosting)
    : eventPosting_(eventPosting),
      log_(configuration.logDescriptor, g_main_context_default()),
      runLoop_(log_, g_main_context_default()),
      folder_(configuration.runtimeDirectory),
      sharedMemory_(configuration.keyOffset, log_),
      messagePorts_(folder_, runLoop_, log_),
      processRegistry_(folder_, runLoop_, log_, configuration.ownProcess),
      application_(runLoop_, [this] { cleanUp(); }),
      console_(configuration.consoleDescriptor),
      screens_(configuration.screen),
      textInputSources_(configuration.configDirectory, application_.bundleIdentifier(), "Quorvane",
                        log_),
      userDefaults_(configuration.configDirectory, log_) {}

DesktopHost::~DesktopHost() { cleanUp(); }

void DesktopHost::cleanUp() {
  processRegistry_.withdraw();
  messagePorts_.closeLocalPorts();
  sharedMemory_.removeOwnSegments();
  log_.flush();
}

Platform DesktopHost::platform() {
  return {application_,
          carbonEvents_,
          clock_,
          console_,
          eventPosting_,
          inputMethodKit_,
          log_,
          messagePorts_,
          processManager_,
          resourceManager_,
          runLoop_,
          screens_,
          sharedMemory_,
          textEncoding_,
          textInputSources_,
          textServicesManager_,
          userDefaults_,
          workspace_};
}

}  // namespace quorvane::desktop
