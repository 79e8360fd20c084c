#include "apps/TypeSession.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <stdexcept>

#include "apps/EndSignals.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/CurrentAppFlags.h"
#include "src/shell/main.h"

namespace quorvane {
namespace {

using std::chrono::milliseconds;
using SteadyClock = std::chrono::steady_clock;

constexpr milliseconds kStandInLimit{10'000};
constexpr milliseconds kTurn{10};
constexpr milliseconds kQuiet{30};  ///< nothing has come for so long: no fix is on its way
constexpr milliseconds kQuietLimit{200};

void say(std::string_view text) { std::cerr << text << '\n'; }

std::unique_ptr<StandIn> startStandIn(const TypeOptions& options) {
  if (!options.checker) return nullptr;
  const bool text = options.trace || options.showPrivate;
  const auto talk = text ? StandIn::Talk::LogWithText : StandIn::Talk::Log;
  const bool quiet = !options.trace && !options.log;
  return std::make_unique<StandIn>(quiet ? StandIn::Talk::None : talk);
}

/// Log and console lines are shown on request only.
desktop::DesktopConfiguration configurationFor(const TypeOptions& options, int nowhere) {
  auto configuration = desktop::DesktopConfiguration::fromEnvironment();
  if (!options.log) configuration.consoleDescriptor = nowhere;
  return configuration;
}

/// The keyboard knows one return key, and a line feed comes of it.
char32_t keyFor(char32_t character) { return character == U'\n' ? U'\r' : character; }

}  // namespace

TypeSession::TypeSession(const TypeOptions& options)
    : options_(options),
      trace_(say),
      standIn_(startStandIn(options)),
      nowhere_(::open("/dev/null", O_WRONLY | O_CLOEXEC)),
      configuration_(configurationFor(options, nowhere_.get())),
      host_(configuration_, events_),
      messagePorts_(host_.platform().messagePorts),
      sharedMemory_(host_.platform().sharedMemory),
      application_(
          host_.application(), [this] { typeAll(); }, [this] { cleanUp(); }),
      process_(platform()),
      controller_(process_),
      textApplication_(host_.platform().clock, host_.log(), events_),
      document_(textApplication_.addDocument()) {
  host_.log().enabled = options.log;
  host_.log().showPrivate = options.showPrivate;
  process_.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS = options.switches;
  textApplication_.setController(&controller_);
  observe();
  watchSignals();
}

TypeSession::~TypeSession() { cleanUp(); }

/// The host's, with what is to be observed in between.
Platform TypeSession::platform() {
  const Platform host = host_.platform();
  SharedMemory& plain = host.sharedMemory;
  return {.application = application_,
          .carbonEvents = host.carbonEvents,
          .clock = host.clock,
          .console = host.console,
          .eventPosting = host.eventPosting,
          .inputMethodKit = host.inputMethodKit,
          .log = host.log,
          .messagePorts = messagePorts_,
          .processManager = host.processManager,
          .resourceManager = host.resourceManager,
          .runLoop = host.runLoop,
          .screens = host.screens,
          .sharedMemory = options_.trace ? sharedMemory_ : plain,
          .textEncoding = host.textEncoding,
          .textInputSources = host.textInputSources,
          .textServicesManager = host.textServicesManager,
          .userDefaults = host.userDefaults,
          .workspace = host.workspace};
}

void TypeSession::observe() {
  messagePorts_.received = [this](std::int32_t messageId, const CFData* data) {
    ++packets_;
    if (options_.trace) trace_.received(messageId, data);
  };
  if (!options_.trace) return;
  messagePorts_.sent = [this](std::int32_t messageId, std::size_t size, std::int32_t result) {
    trace_.sent(messageId, size, result);
  };
  sharedMemory_.attached = [this](std::uint32_t key) { trace_.attached(key); };
  textApplication_.trace = [this](const field::EventReport& report) { trace_.event(report); };
  textApplication_.onClientCall = [this](const field::Document& /*document*/,
                                         const field::ClientCall& call) {
    trace_.clientCall(call);
  };
}

void TypeSession::watchSignals() {
  for (const int number : kEndSignals) {
    signalWatches_.push_back(
        host_.runLoop().onSignal(number, [this, number] { interrupted(number); }));
  }
}

/// The end of the stand-in ends any wait for it; the typing stops before the next key.
void TypeSession::interrupted(int signal) {
  signal_ = signal;
  if (standIn_) standIn_->end();
}

void TypeSession::run(std::u32string_view text) {
  text_ = text;
  host_.processRegistry().setFrontApplication(::getpid());
  if (standIn_) awaitStandIn();
  if (signal_ != 0) return;
  if (InputMethodMain(process_, {}) != 0) {
    throw std::runtime_error("the input method doesn't start; try again with --log");
  }
}

void TypeSession::awaitStandIn() {
  const auto limit = SteadyClock::now() + kStandInLimit;
  while (host_.processRegistry().find(standIn_->pid()) == nullptr) {
    if (signal_ != 0) return;
    if (!standIn_->running()) {
      throw std::runtime_error(
          "the stand-in main application has ended; run `quorvane checker`"
          " to see why, or type with --no-checker");
    }
    if (SteadyClock::now() > limit) {
      throw std::runtime_error(
          "the stand-in main application isn't ready after ten seconds;"
          " type with --no-checker, or see --trace");
    }
    host_.runLoop().runFor(kTurn);
  }
  if (Is_Quorvane_AppReady(process_) == 0) {
    say("quorvane: the stand-in main application has no dictionary; typing goes on unchecked");
  }
  MasterCloseToolRecPtr(process_);
}

/// Announced last of all: our port stands, and the stand-in has announced itself before us. One
/// that finds us running already can't know how the word began that it sees first, and leaves it
/// alone.
void TypeSession::typeAll() {
  announcement_ = host_.processRegistry().announce(configuration_.ownProcess);
  textApplication_.focus(&document_);
  settle();
  for (const char32_t character : text_) {
    if (signal_ != 0) return;
    typeOne(character);
  }
  awaitLastFixes();
}

void TypeSession::typeOne(char32_t character) {
  textApplication_.type(keyFor(character));
  settle();
  if (options_.delay.count() == 0) return;
  pause();
  settle();
}

/// The delay in short turns, so that a signal needn't wait for the end of it.
void TypeSession::pause() {
  const auto end = SteadyClock::now() + options_.delay;
  while (signal_ == 0) {
    const auto left = std::chrono::ceil<milliseconds>(end - SteadyClock::now());
    if (left <= milliseconds(0)) return;
    host_.runLoop().runFor(std::min(left, kTurn));
  }
}

/// Everything that waits is handled: messages, notifications, posted events.
void TypeSession::settle() {
  do {
    host_.runLoop().runPending();
    textApplication_.deliverPosted();
  } while (events_.size() != 0);
}

void TypeSession::awaitLastFixes() {
  milliseconds quiet{0};
  for (milliseconds waited{0}; quiet < kQuiet && waited < kQuietLimit; waited += kTurn) {
    const std::uint64_t before = packets_;
    host_.runLoop().runFor(kTurn);
    settle();
    quiet = packets_ == before ? quiet + kTurn : milliseconds{0};
  }
}

void TypeSession::cleanUp() {
  if (standIn_) standIn_->end();
  host_.cleanUp();
  surroundings_.remove();
}

}  // namespace quorvane
