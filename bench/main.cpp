// A cold start; then one key and one message, each beside the bare system calls it can't do
// without, and word completion. All but the start is pinned to one processor, and variants take
// turns.

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/eventfd.h>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/ColdStart.h"
#include "bench/Completion.h"
#include "bench/Menu.h"
#include "bench/Peer.h"
#include "bench/Ratios.h"
#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/FieldParts.h"
#include "src/bridge/Presence.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/completion/InputController.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/menu/MenuShortcuts.h"
#include "src/menu/QBIM_IMK_Params.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/shell/main.h"

namespace quorvane::bench {
namespace {

constexpr std::size_t kPacketSize = 24;

/// A client that holds no text: what it does is not what is measured.
class QuietClient : public IMKTextInput {
 public:
  NSRange selectedRange() override { return {}; }
  void insertText(const std::u16string& /*text*/, NSRange /*replacementRange*/) override {}
  void setMarkedText(const NSAttributedString& /*text*/, NSRange /*selectionRange*/,
                     NSRange /*replacementRange*/) override {}
  void attributesForCharacterIndex(std::uint64_t /*index*/, NSRect& rect) override {
    rect = {100, 100, 1, 16};
  }
};

/// The started input method on the desktop host.
class InputMethod {
 public:
  InputMethod() {
    host_.log().enabled = false;
    host_.processRegistry().setFrontApplication(::getpid());
    const auto stop = host_.runLoop().addTimer(std::chrono::milliseconds(1), [this] {
      host_.runLoop().quit();
      return false;
    });
    InputMethodMain(instance_, {});
    host_.runLoop().runPending();
    useParameters();
  }

  /// Waits until the main application has come, or gone.
  void awaitMainApplication(bool running) {
    while ((IsQUORVANEAPPRUNNING(instance_) != 0) != running) {
      host_.runLoop().runFor(std::chrono::milliseconds(5));
    }
  }
  /// A letter inside a word: published, no scan. The word is kept short.
  void key() {
    if (++keys_ % 64 == 0) startWord();
    controller_.handleEvent(event_, &client_);
  }
  void startWord() {
    if (BIMSessionRec* session = BIMGetActiveSession(instance_); session != nullptr) {
      session->cursor = 0;
      session->length = 0;
      session->editState = 0;
    }
  }
  void setLog(bool on) { host_.log().enabled = on; }
  Instance& instance() { return instance_; }

 private:
  /// As at the first key of an application; those behind it find nothing new.
  void useParameters() {
    GetAndSetMenuParams3(instance_);
    const bool hasShortcuts = instance_.state<MenuShortcutsState>().APPQORVMENUKEYSHAND != nullptr;
    const auto switches = instance_.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS;
    if (!hasShortcuts || switches != kSwitches) std::abort();
  }
  static desktop::DesktopConfiguration configuration() {
    auto result = desktop::DesktopConfiguration::fromEnvironment();
    const std::string file = std::string(std::getenv("QUORVANE_RUNTIME_DIR")) + "/log";
    result.logDescriptor = ::open(file.c_str(), O_CREAT | O_WRONLY | O_APPEND | O_CLOEXEC, 0600);
    return result;
  }

  field::FieldParts nowhere_;
  desktop::DesktopHost host_{configuration(), nowhere_.forPlatform()};
  Instance instance_{host_.platform()};
  InputController controller_{instance_};
  QuietClient client_;
  CarbonEvent carbon_{kEventClassKeyboard, kEventRawKeyDown, Seconds(1), 'a', 0, 0, {}};
  NSEvent event_{NSEventType::KeyDown, 0, 0, u"a", &carbon_};
  std::uint64_t keys_ = 0;
};

struct Stage {
  std::array<int, 2> sockets{};
  std::optional<Child> echoing;
  std::optional<Child> mainApplication;
  std::optional<InputMethod> inputMethod;

  Stage() {
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET, 0, sockets.data()) != 0) std::abort();
    echoing.emplace([this] {
      ::close(sockets[0]);
      echo(sockets[1]);
    });
    ::close(sockets[1]);
    mainApplication.emplace(serveAsMainApplication);
    inputMethod.emplace();
    inputMethod->awaitMainApplication(true);
  }
};

Stage& stage() {
  static Stage instance;
  return instance;
}

void touchSegment(std::uint32_t key, std::size_t size) {
  const int id = ::shmget(static_cast<key_t>(key), size, 0666);
  shmid_ds info{};
  if (::shmctl(id, IPC_STAT, &info) != 0) std::abort();
  void* address = ::shmat(id, nullptr, 0);
  *static_cast<volatile char*>(address) = *static_cast<volatile char*>(address);
  ::shmdt(address);
}

void bareAttachments(benchmark::State& state) {
  stage();
  const auto offset = static_cast<std::uint32_t>(std::stoul(std::getenv("QUORVANE_KEY_OFFSET")));
  for (auto step : state) {
    touchSegment(880 + offset, 376);
    touchSegment(893 + offset, 384);
  }
}

void keyDown(benchmark::State& state) {
  for (auto step : state) stage().inputMethod->key();
}

void keyDownWithLog(benchmark::State& state) {
  stage().inputMethod->setLog(true);
  for (auto step : state) stage().inputMethod->key();
  stage().inputMethod->setLog(false);
}

/// Waiting for the answer it looks at one more descriptor, as whoever runs a loop meanwhile must.
void bareEcho(benchmark::State& state) {
  const int socket = stage().sockets[0];
  const desktop::Descriptor loop(::eventfd(0, EFD_CLOEXEC));
  std::array<pollfd, 2> polled{{{socket, POLLIN, 0}, {loop.get(), POLLIN, 0}}};
  std::array<std::uint8_t, kPacketSize> packet{};
  for (auto step : state) {
    if (::send(socket, packet.data(), packet.size(), 0) < 0) std::abort();
    if (::poll(polled.data(), polled.size(), -1) < 0) std::abort();
    if (::recv(socket, packet.data(), packet.size(), 0) < 0) std::abort();
  }
}

void messageWithReply(benchmark::State& state) {
  Instance& instance = stage().inputMethod->instance();
  for (auto step : state) {
    if (BIM_SendMessageToUIServerWithReply(instance, 2, "BNCH"_4cc, nullptr) != 0) std::abort();
  }
}

/// Runs last: the main application goes for it.
void keyDownWithoutMainApplication(benchmark::State& state) {
  Stage& all = stage();
  all.mainApplication.reset();
  all.inputMethod->awaitMainApplication(false);
  for (auto step : state) all.inputMethod->key();
}

void pinToOneProcessor() {
  cpu_set_t processors;
  CPU_ZERO(&processors);
  CPU_SET(static_cast<std::size_t>(sched_getcpu()), &processors);
  ::sched_setaffinity(0, sizeof(processors), &processors);
}

void runAll(Ratios& ratios) {
  for (const auto& [name, function] :
       std::vector<std::pair<const char*, void (*)(benchmark::State&)>>{
           {"bareAttachments", bareAttachments},
           {"keyDown", keyDown},
           {"keyDownWithLog", keyDownWithLog},
           {"bareEcho", bareEcho},
           {"messageWithReply", messageWithReply}}) {
    benchmark::RegisterBenchmark(name, function)->Repetitions(15)->ReportAggregatesOnly(false);
  }
  registerMenu([]() -> Instance& { return stage().inputMethod->instance(); });
  if (!registerCompletion()) std::puts("no word data: run scripts/setup to measure completion");
  benchmark::RunSpecifiedBenchmarks(&ratios);
  benchmark::ClearRegisteredBenchmarks();
  benchmark::RegisterBenchmark("keyDownWithoutMainApplication", keyDownWithoutMainApplication);
  benchmark::RunSpecifiedBenchmarks(&ratios);
}

}  // namespace
}  // namespace quorvane::bench

int main(int argc, char** argv) {
  using quorvane::bench::Ratios;
  std::vector<char*> arguments(argv, argv + argc);
  std::string interleaved = "--benchmark_enable_random_interleaving=true";
  arguments.push_back(interleaved.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  quorvane::bench::printColdStart();
  quorvane::bench::pinToOneProcessor();
  static const quorvane::bench::Surroundings surroundings;  // outlives whatever else is static
  Ratios ratios;
  quorvane::bench::runAll(ratios);
  ratios.print("one-key", "keyDown", "bareAttachments", 1.15);
  ratios.print("one-key-with-log", "keyDownWithLog", "bareAttachments", 1.30);
  ratios.printTime("one-key-without-main-application", "keyDownWithoutMainApplication", 1000);
  ratios.print("message-with-reply", "messageWithReply", "bareEcho", 1.30);
  quorvane::bench::printMenu(ratios);
  quorvane::bench::printCompletion(ratios);
  return 0;
}
