#include "apps/RunningSystem.h"

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <iostream>
#include <stdexcept>
#include <string>
#include <utility>

#include "apps/Command.h"
#include "apps/DesktopClipboard.h"
#include "apps/RunsApplications.h"
#include "apps/UserParameters.h"
#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/qorv_sharedmem_State.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/shell/QBIM_IMK_Start.h"
#include "src/shell/main.h"
#include "tools/parameters/disk/ParameterFileOnDisk.h"

namespace quorvane {
namespace {

using std::chrono::milliseconds;
using SteadyClock = std::chrono::steady_clock;

/// Log and console lines are shown on request only.
desktop::DesktopConfiguration configurationFor(const SystemOptions& options, int nowhere,
                                               const std::optional<OwnSurroundings>& surroundings) {
  auto configuration = desktop::DesktopConfiguration::fromEnvironment();
  configuration.logDescriptor = options.logDescriptor.value_or(nowhere);
  configuration.consoleDescriptor = configuration.logDescriptor;
  if (surroundings) {
    configuration.ownProcess.signature = options.application.signature;
    chooseApplications(configuration, options, surroundings->applications());
  } else {
    prepareUsersApplications(configuration);
  }
  return configuration;
}

/// The user's, with what this run has otherwise.
parameters::ResourceFork parametersFor(parameters::ResourceFork file,
                                       const SystemOptions& options) {
  const parameters::KnownApplication own = options.application.application();
  const auto users = parameters::switchesOf(file, own);
  std::uint32_t word = options.switches.value_or(users ? users->word : kDefaultAppFlags);
  if (!options.completes) word &= ~kCompletionFlag;
  parameters::setSwitches(file, own, word);
  if (options.completion.withSpace) parameters::setFlag(file, parameters::kWithSpace, true);
  if (options.completion.vertical) parameters::setFlag(file, parameters::kVertical, true);
  if (options.completion.shiftToggle) parameters::setFlag(file, parameters::kShiftToggle, true);
  return file;
}

std::string whyNone(const std::string& trouble) {
  const std::string none = "the main application doesn't start";
  return trouble.empty()
             ? none + "; run `quorvane checker` to see why, or go without it by --no-checker"
             : none + ": " + trouble + "\nGo without it by --no-checker";
}

}  // namespace

RunningSystem::RunningSystem(const SystemOptions& options)
    : surroundings_(options.resident ? std::nullopt : std::make_optional(options.ownParameters())),
      hasMainApplication_(options.checker && !options.resident),
      nowhere_(::open("/dev/null", O_WRONLY | O_CLOEXEC)),
      configuration_(configurationFor(options, nowhere_.get(), surroundings_)),
      host_(configuration_, clientParts(options)),
      clock_(host_.platform().clock, [this] { return textApplication_.delivering(); }),
      claim_(desktop::RuntimeFolder(configuration_.runtimeDirectory)
                 .claimSegments(configuration_.keyOffset)),
      messagePorts_(host_.platform().messagePorts),
      sharedMemory_(host_.platform().sharedMemory),
      application_(
          host_.application(), [this] { begin(); }, [this] { exiting(); }),
      instance_(platform()),
      front_(host_, instance_, configuration_.runtimeDirectory),
      controller_(instance_),
      textApplication_(
          host_.platform().clock, host_.log(), field_.events,
          std::make_shared<DesktopClipboard>(configuration_.runtimeDirectory, host_.log())),
      document_(options.resident ? nullptr : &textApplication_.addDocument()) {
  host_.log().enabled = options.logDescriptor.has_value();
  host_.log().showPrivate = options.showPrivate;
  if (!standsAside()) prepareParameters(options);
  connectKeyboard();
  field_.connect(textApplication_, host_.screens(), host_.application());
  textApplication_.setController(&controller_);
  watchSignals();
  held_.reset();
}

ClientParts RunningSystem::clientParts(const SystemOptions& options) {
  if (options.resident) field_.longestWithinKey = desktop::kLongestOfClients;
  return field_.forPlatform();
}

/// The host's, with what is to be observed in between.
Platform RunningSystem::platform() {
  const Platform host = host_.platform();
  return {.alerts = host.alerts,
          .appleEvents = host.appleEvents,
          .application = application_,
          .bundle = host.bundle,
          .carbonEvents = host.carbonEvents,
          .characterSets = host.characterSets,
          .clock = surroundings_ ? host.clock : clock_,
          .console = host.console,
          .dateFormatting = host.dateFormatting,
          .eventPosting = host.eventPosting,
          .fileManager = host.fileManager,
          .inputMethodKit = host.inputMethodKit,
          .jsonSerialization = host.jsonSerialization,
          .launchServices = host.launchServices,
          .log = host.log,
          .messagePorts = messagePorts_,
          .processManager = host.processManager,
          .resourceManager = host.resourceManager,
          .runLoop = host.runLoop,
          .screens = host.screens,
          .scriptHost = host.scriptHost,
          .sharedMemory = sharedMemory_,
          .sharedSpellChecker = host.sharedSpellChecker,
          .textEncoding = host.textEncoding,
          .textInputSources = host.textInputSources,
          .textServicesManager = host.textServicesManager,
          .unicodeUtilities = host.unicodeUtilities,
          .userDefaults = host.userDefaults,
          .workspace = host.workspace};
}

/// The document's application is this process.
void RunningSystem::prepareParameters(const SystemOptions& options) {
  const auto& users = surroundings_ ? surroundings_->usersData() : configuration_.dataDirectory;
  prepareUserParameters(users);
  if (!options.ownParameters()) return;
  const auto file = parametersFor(parameters::readParameterFile(users), options);
  parameters::changeParameterFile(configuration_.dataDirectory, [&](auto& own) { own = file; });
}

/// Keys posted to any other process than that of the text fields have nowhere to go. The resident
/// one stands for all of its clients, which have no signatures of their own.
void RunningSystem::connectKeyboard() {
  field_.events.layout = [this] { return host_.keyboardLayout(); };
  field_.events.mouseLocation = [this] { return host_.screens().mouseLocation(); };
  field_.events.reaches = [this](const ProcessSerialNumber& psn) {
    return psn == desktop::serialNumberOf(front_.client()) ||
           (!surroundings_ && psn == desktop::serialNumberOf(::getpid()));
  };
}

void RunningSystem::watchSignals() {
  for (const int number : kEndSignals) {
    signalWatches_.push_back(
        host_.runLoop().onSignal(number, [this, number] { interrupted(number); }));
  }
  const auto isEnding = [this] { return signal_ != 0; };
  host_.launchServices().isEnding = isEnding;
  host_.alerts().isEnding = isEnding;
}

void RunningSystem::interrupted(int signal) { signal_ = signal; }

void RunningSystem::run(std::function<void()> body) {
  body_ = std::move(body);
  host_.processRegistry().setFrontApplication(::getpid());
  if (standsAside()) return standAside();
  if (InputMethodMain(instance_, {}) != 0) {
    throw std::runtime_error("the input method doesn't start; try again with --log");
  }
}

void RunningSystem::requireMainApplication() {
  if (host_.processRegistry().findSignature(kQuorvaneSignature) == nullptr) {
    throw std::runtime_error(whyNone(host_.supervisor().trouble()));
  }
  if (Is_Quorvane_AppReady(instance_) == 0) {
    std::cerr << "quorvane: the main application has no dictionary; typing goes on unchecked\n";
  }
  MasterCloseToolRecPtr(instance_);
}

void RunningSystem::standAside() {
  std::cerr << "quorvane: another input method works with these shared segments; every key passes "
               "as it is typed. End that one first, or set QUORVANE_RUNTIME_DIR and "
               "QUORVANE_KEY_OFFSET to others\n";
  textApplication_.setController(nullptr);
  textApplication_.focus(document_);
  body_();
}

/// Announced last of all: our port stands, and the main application has announced itself before us.
/// One that finds us running already can't know how the word began that it sees first, and leaves
/// it alone.
void RunningSystem::begin() {
  if (signal_ != 0) return;
  if (hasMainApplication_) requireMainApplication();
  status_.emplace(instance_, configuration_.runtimeDirectory, configuration_.keyOffset);
  status_->tellOfFields = tellOfFields;
  textApplication_.watch = &*status_;
  announcement_ = host_.processRegistry().announce(configuration_.ownProcess);
  textApplication_.focus(document_);
  settle();
  body_();
}

void RunningSystem::settle() {
  do {
    host_.runLoop().runPending();
    if (!standsAside() && front_.update()) host_.runLoop().runPending();
    textApplication_.deliverPosted();
  } while (field_.events.size() != 0);
  if (status_) status_->update();
}

void RunningSystem::restoreSiblings() {
  for (const FourCharCode crashed : host_.processRegistry().takeCrashed()) {
    if (signal_ != 0) return;
    crashed == kQuorvaneSignature ? QorvLaunchApp(instance_) : Init_BIM_Server(instance_);
  }
}

void RunningSystem::exiting() {
  if (beforeExit) beforeExit();
  cleanUp();
}

void RunningSystem::cleanUp() {
  textApplication_.watch = nullptr;
  status_.reset();
  host_.cleanUp();
  if (surroundings_) surroundings_->remove();
}

int endBySignal(int signal) {
  std::signal(signal, SIG_DFL);
  std::raise(signal);
  return kExitFailed;
}

}  // namespace quorvane
