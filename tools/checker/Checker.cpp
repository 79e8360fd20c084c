#include "tools/checker/Checker.h"

#include <algorithm>
#include <csignal>
#include <stdexcept>

#include "hosts/field/FieldParts.h"
#include "src/base/HostWords.h"
#include "src/base/Log.h"
#include "src/bridge/qorv_sharedmem.h"
#include "tools/checker/SharedSegments.h"
#include "tools/checker/WindowFile.h"

namespace quorvane::checker {

namespace {

constexpr std::string_view kServerPort = "Q7T2M4K9W1.com.tallowmere.Quorvane.server";

static_assert(kToolSegment.size == kToolRecordSize && kTextSegment.size == kTextRecordSize &&
              kMenuSegment.size == kMenuRecordSize);
constexpr std::uint32_t kTextSlot = 1;
constexpr std::size_t kClientOffset = 12;  // in the payload of a command

// Somebody waits for the answer to a scan, so that a look comes soon while text is being typed, and
// seldom otherwise: a scan wakes us. Other requests wait for a look.
struct Pace {
  std::uint64_t quietNanoseconds;  ///< up to so long after the last sign of work
  Ticker::Microseconds interval;
};
constexpr std::array kPaces{Pace{1'000'000'000, Ticker::Microseconds(200)},
                            Pace{2'000'000'000, Ticker::Microseconds(1000)},
                            Pace{10'000'000'000, Ticker::Microseconds(10'000)},
                            Pace{UINT64_MAX, Ticker::Microseconds(250'000)}};

/// Who changes a file by hand waits as long, at most, until it counts.
constexpr std::uint64_t kNanosecondsBetweenLooksAtFiles = 1'000'000'000;

std::string_view textOf(ScanEnd end) {
  switch (end) {
    case ScanEnd::Fixed:
      return "fixed";
    case ScanEnd::Offered:
      return "popup opened";
    case ScanEnd::NobodyToTell:
      return "nobody to send the fix to";
    case ScanEnd::Late:
      return "too late";
    case ScanEnd::NothingToFix:
      break;
  }
  return "nothing to fix";
}

}  // namespace

desktop::Announcement checkerAnnouncement() {
  return {"Quorvane", "QVPX"_4cc, "APPL"_4cc, "com.tallowmere.quorvane"};
}

struct Checker::Block {
  void* address;
  std::size_t size;

  [[nodiscard]] std::span<std::uint8_t> bytes() const {
    return {static_cast<std::uint8_t*>(address), size};
  }
  [[nodiscard]] std::span<std::uint32_t> words() const {
    return {static_cast<std::uint32_t*>(address), size / sizeof(std::uint32_t)};
  }
};

Checker::Checker(desktop::DesktopHost& host, const CheckerOptions& options,
                 const desktop::DesktopConfiguration& configuration,
                 std::unique_ptr<Spelling> spelling)
    : host_(host),
      instance_(host.platform()),
      options_(options),
      runtimeFolder_(configuration.runtimeDirectory),
      spelling_(std::move(spelling)),
      clipboard_(configuration.runtimeDirectory, host.log()) {
  // The creating attach would clear the segments of a main application that is at work. Only one
  // process can have the port, so that of two that start at once only one comes to the segments.
  const auto port = takePort();
  createSegments();
  removePopupList(runtimeFolder_);
  removeWindowFile(runtimeFolder_);
  clipboard_.takeLent();  // of one that was killed
  servePort(port);
  ToolRecord(segments_.tool).put(At::InteractiveMode, 1);
  readUsersFiles(configuration.dataDirectory);
  trySpelling();
  correctionSwitches_ = readCorrectionSwitches(configuration.configDirectory, host_.log());
  ToolRecord(segments_.tool)
      .put(At::SmartCharacters, options_.smartCharacters | correctionSwitches_.smartCharacters());
  if (spelling_) loadCorrections(configuration.configDirectory);
  offerStyles(configuration.configDirectory);
  prepareWindow();
  announce();
  beginConversation();
  Log(instance_, "* checker: ready");
}

/// In the reverse order: who looks for us first finds us gone.
Checker::~Checker() {
  ticker_.reset();
  wakeUps_.reset();
  announcement_.reset();
  window_.reset();
  clipboardLoan_.reset();
  conversation_.reset();  // closes its window while the segments are there
  const ToolRecord tool(segments_.tool);
  tool.put(At::AppReady, 0);
  tool.put(At::InteractiveMode, 0);
  Log(instance_, "* checker: ended");
  host_.cleanUp();
}

void Checker::createSegments() {
  segments_.tool = createSegment(kToolSegment.key, kToolSegment.size, 0).words();
  segments_.text = createSegment(kTextSegment.key, kTextSegment.size, kTextSlot).bytes();
  segments_.command = createSegment(kCommandSegment.key, kCommandSegment.size, 2).bytes();
  menuBytes_ = createSegment(kMenuSegment.key, kMenuSegment.size, 3).bytes();
  createSegment(kSpellSegment.key, kSpellSegment.size, 4);
  const int textSegment = instance_.state<SharedMemoryState>().shmid[kTextSlot];
  inputMethod_.emplace(host_.processRegistry(), instance_.platform().messagePorts, textSegment);
}

Checker::Block Checker::createSegment(std::uint32_t key, std::size_t size, std::uint32_t slot) {
  void* address = GETSAFEMEMBLOCK(instance_, key, size, slot);
  if (address == nullptr || instance_.platform().sharedMemory.attachedSize(address) < size) {
    const std::string why = host_.sharedMemory().creationFailure();
    throw std::runtime_error("can't create shared segment " + std::to_string(key) + ": " +
                             (why.empty() ? "it is another user's" : why) +
                             "; see `ipcs -m` for who has it");
  }
  return {address, size};
}

std::shared_ptr<CFMessagePort> Checker::takePort() {
  MessagePorts& ports = instance_.platform().messagePorts;
  auto port = ports.CFMessagePortCreateLocal(
      kServerPort, [this](std::int32_t command, const CFData* data) -> std::optional<CFData> {
        obey(static_cast<std::uint32_t>(command), data);
        return std::nullopt;
      });
  if (port != nullptr) return port;
  if (ports.CFMessagePortCreateRemote(kServerPort) != nullptr) {
    throw std::runtime_error("a main application is running already; end it first");
  }
  throw std::runtime_error("can't serve the port " + std::string(kServerPort));
}

void Checker::obey(std::uint32_t command, const CFData* data) {
  Log(instance_, "* checker: command message ", command);
  if (data != nullptr) messageClient_ = hostWord32(*data, kClientOffset);
  if (conversation_) conversation_->obey(command);
  messageClient_.reset();
}

/// What has been sent to the port since it was taken waits for this.
void Checker::servePort(const std::shared_ptr<CFMessagePort>& port) {
  Platform& platform = instance_.platform();
  const auto source = platform.messagePorts.CFMessagePortCreateRunLoopSource(port);
  CFRunLoop* loop = platform.runLoop.CFRunLoopGetCurrent();
  if (source == nullptr || loop == nullptr) {
    throw std::runtime_error("can't serve the port " + std::string(kServerPort));
  }
  platform.runLoop.CFRunLoopAddSource(*loop, source);
}

/// An input method that waits for the announcement types only afterwards, under our eyes; one that
/// runs by now may be in the middle of a word.
void Checker::announce() {
  desktop::ProcessRegistry& registry = host_.processRegistry();
  registry.refresh();
  textsBeganWithUs_ = runningInputMethods(registry).empty();
  announcement_ = registry.announce(checkerAnnouncement());
  wakeUps_.emplace(host_.runLoop(), registry.announcementOf(registry.ownPid()), [this] {
    if (conversation_) look();
  });
}

void Checker::beginConversation() {
  Platform& platform = instance_.platform();
  if (options_.manner == Manner::Hostile) {
    scribbler_.emplace(segments_.tool, segments_.text, segments_.command, *inputMethod_,
                       options_.seed);
  }
  conversation_.emplace(segments_, corrections_ ? &*corrections_ : nullptr, platform.clock,
                        *inputMethod_, options_, textsBeganWithUs_, listener());
  conversation_->expand(&users_->abbreviations());
  lastWork_ = platform.clock.mach_absolute_time();
  ticker_.emplace(host_.runLoop(), [this] { look(); });
  ticker_->every(kPaces.front().interval);
}

Listener Checker::listener() {
  Listener listener;
  listener.fix = [this](const Fix& fix) { logFix(fix); };
  listener.command = [this](std::uint32_t command, std::uint32_t bits) {
    Log(instance_, "* checker: command ", command, " bits ", bits);
  };
  listener.perform = [this](std::uint32_t command) { perform(command); };
  listener.popup = [this](const PopupList* list) { tellOfPopup(list); };
  if (options_.traceScans) {
    listener.scan = [this](ScanEnd end) { Log(instance_, "* checker: scan: ", textOf(end)); };
  }
  return listener;
}

std::u16string Checker::units(const std::string& text) {
  return instance_.platform()
      .textEncoding
      .initWithData({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()},
                    NSStringEncoding::UTF8)
      .value_or(u"");
}

void Checker::logFix(const Fix& fix) {
  const std::u16string word = units(fix.word);
  const std::u16string replacement = units(fix.replacement);
  Log(instance_, "* checker: fix \"", Private{word}, "\" to \"", Private{replacement}, "\" count ",
      fix.count, " port ", inputMethod_->name());
  if (options_.showText) host_.log().flush();  // whoever watches sees it where it belongs
}

void Checker::tellOfPopup(const PopupList* list) {
  if (list == nullptr) {
    removePopupList(runtimeFolder_);
    Log(instance_, "* checker: popup closed");
    return;
  }
  const std::u16string word = units(list->word);
  const bool written = writePopupList(runtimeFolder_, *list);
  Log(instance_, "* checker: popup \"", Private{word}, "\" suggestions ", list->suggestions.size(),
      written ? "" : ", which nobody can read");
  if (options_.showText) host_.log().flush();
}

void Checker::look() {
  const std::uint64_t now = instance_.platform().clock.mach_absolute_time();
  const bool asked = conversation_->poll();
  if (window_->poll() || asked || somebodyTypes()) lastWork_ = now;
  if (scribbler_) scribbler_->maybe();
  if (now - lastLookAtFiles_ >= kNanosecondsBetweenLooksAtFiles) {
    lastLookAtFiles_ = now;
    users_->readIfChanged();
  }
  const std::uint64_t quiet = now - std::min(now, lastWork_);
  ticker_->every(std::ranges::find_if(kPaces, [quiet](const Pace& pace) {
                   return quiet <= pace.quietNanoseconds;
                 })->interval);
}

/// Each key that is published changes where the text ends, but for one that replaces another.
bool Checker::somebodyTypes() {
  const auto extent = segments_.text.first(lastExtent_.size());
  if (std::ranges::equal(extent, lastExtent_)) return false;
  std::ranges::copy(extent, lastExtent_.begin());
  return true;
}

void runChecker(const CheckerOptions& options) {
  auto configuration = desktop::DesktopConfiguration::fromEnvironment();
  configuration.ownProcess = checkerAnnouncement();
  field::FieldParts nowhere;  // the stand-in presses none
  desktop::DesktopHost host(configuration, nowhere.forPlatform());
  host.log().showPrivate = options.showText;
  // From here on such a signal waits for the loop, so that it can't leave anything behind.
  const auto end = [&host] { host.runLoop().quit(); };
  const auto onInterrupt = host.runLoop().onSignal(SIGINT, end);
  const auto onTerminate = host.runLoop().onSignal(SIGTERM, end);
  const auto onHangUp = host.runLoop().onSignal(SIGHUP, end);
  const Checker checker(host, options, configuration, openDictionaries(options.dictionary));
  host.runLoop().run();
}

}  // namespace quorvane::checker
