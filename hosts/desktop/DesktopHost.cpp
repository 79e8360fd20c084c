#include "hosts/desktop/DesktopHost.h"

#include <malloc.h>

namespace quorvane::desktop {
namespace {

/// By itself the allocator keeps what a start that reads the word data has freed.
void returnFreedMemoryToSystem() {
  mallopt(M_MMAP_THRESHOLD, 16 << 20);
  mallopt(M_TRIM_THRESHOLD, 8 << 20);
}

}  // namespace

DesktopHost::DesktopHost(const DesktopConfiguration& configuration, const ClientParts& clients)
    : clients_(clients),
      log_(configuration.logDescriptor, g_main_context_default()),
      runLoop_(log_, g_main_context_default()),
      folder_(configuration.runtimeDirectory),
      sharedMemory_(configuration.keyOffset, log_),
      messagePorts_(folder_, runLoop_, log_),
      processRegistry_(folder_, runLoop_, log_, configuration.ownProcess),
      supervisor_(configuration, folder_, runLoop_, processRegistry_, log_),
      appleEvents_(processRegistry_, ConsentFile(configuration.configDirectory / "consent", log_),
                   alerts_),
      application_(runLoop_, clients.annotationWindow, [this] { cleanUp(); }),
      bundle_(configuration.bundleDirectory, application_.bundleIdentifier()),
      console_(configuration.consoleDescriptor),
      fileManager_(configuration.homeDirectory, configuration.cacheDirectory,
                   {{kApplicationSupportFolderType, configuration.dataDirectory},
                    {kPreferencesFolderType, configuration.preferencesDirectory},
                    {kApplicationsFolderType, configuration.applicationsDirectory}},
                   log_),
      resourceManager_(fileManager_, configuration.bundleDirectory, log_),
      screens_(configuration.screen),
      textInputSources_(configuration.configDirectory, application_.bundleIdentifier(), "Quorvane",
                        log_),
      userDefaults_(configuration.configDirectory, log_) {
  const WithinKey withinKey{clients.isWithinKey, clients.longestWithinKey};
  messagePorts_.withinKey = launchServices_.withinKey = alerts_.withinKey = withinKey;
  returnFreedMemoryToSystem();
}

DesktopHost::~DesktopHost() { cleanUp(); }

void DesktopHost::cleanUp() {
  alerts_.close();
  supervisor_.end();
  processRegistry_.withdraw();
  messagePorts_.closeLocalPorts();
  sharedMemory_.removeOwnSegments();
  log_.flush();
}

Platform DesktopHost::platform() {
  return {.alerts = alerts_,
          .appleEvents = appleEvents_,
          .application = application_,
          .bundle = bundle_,
          .carbonEvents = clients_.carbonEvents,
          .characterSets = characterSets_,
          .clock = clock_,
          .console = console_,
          .dateFormatting = dateFormatting_,
          .eventPosting = clients_.eventPosting,
          .fileManager = fileManager_,
          .inputMethodKit = clients_.inputMethodKit,
          .jsonSerialization = jsonSerialization_,
          .launchServices = launchServices_,
          .log = log_,
          .messagePorts = messagePorts_,
          .processManager = processManager_,
          .resourceManager = resourceManager_,
          .runLoop = runLoop_,
          .screens = screens_,
          .scriptHost = scriptHost_,
          .sharedMemory = sharedMemory_,
          .sharedSpellChecker = spellChecker_,
          .textEncoding = textEncoding_,
          .textInputSources = textInputSources_,
          .textServicesManager = textServicesManager_,
          .unicodeUtilities = unicodeUtilities_,
          .userDefaults = userDefaults_,
          .workspace = workspace_};
}

}  // namespace quorvane::desktop
