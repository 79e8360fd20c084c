#include "bench/Peer.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/FieldParts.h"
#include "hosts/marisa/SavedWordList.h"
#include "src/bridge/QBIMMessageSend.h"
#include "src/bridge/SharedLayout.h"
#include "src/bridge/qorv_sharedmem.h"
#include "tools/parameters/UsualParameters.h"
#include "tools/parameters/disk/ParameterFileOnDisk.h"

namespace quorvane::bench {
namespace {

constexpr std::array<std::pair<std::uint32_t, std::size_t>, 5> kSegments{
    {{880, 376}, {893, 400}, {896, 408}, {897, 384}, {899, 708}}};

void writeInteractiveMode(void* toolRecord) {
  constexpr std::size_t kLastByteOfField = kFieldsOffset + 4 * ToolCRecPtr_InteractiveMode + 3;
  static_cast<std::uint8_t*>(toolRecord)[kLastByteOfField] = 1;
}

}  // namespace

Child::Child(const std::function<void()>& body) : pid_(::fork()) {
  if (pid_ < 0) throw std::runtime_error("fork failed");
  if (pid_ != 0) return;
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  body();
  ::_exit(0);
}

Child::~Child() {
  ::kill(pid_, SIGTERM);
  ::waitpid(pid_, nullptr, 0);
}

Surroundings::Surroundings() {
  std::string pattern = (std::filesystem::temp_directory_path() / "quorvane-bench-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  folder_ = pattern;
  const auto offset = 0x20000000U + static_cast<std::uint32_t>(::getpid()) * 32U;
  ::setenv("QUORVANE_RUNTIME_DIR", folder_.c_str(), 1);
  ::setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
  ::setenv("XDG_CACHE_HOME", folder_.c_str(), 1);
  ::setenv("HOME", folder_.c_str(), 1);
  ::setenv("QUORVANE_DATA_DIR", folder_.c_str(), 1);
  ::setenv("QUORVANE_BUNDLE_DIR", bundleFolder().c_str(), 1);
  ::setenv("QUORVANE_KEY_OFFSET", std::to_string(offset).c_str(), 1);
  parameters::changeParameterFile(folder_, [](auto& file) {
    parameters::addUsual(file);
    const std::string own = desktop::DesktopConfiguration{}.ownProcess.bundleIdentifier;
    parameters::setSwitches(file, {.bundleIdentifier = own}, kSwitches);
  });
}

std::filesystem::path Surroundings::bundleFolder() const {
  const std::filesystem::path data = QUORVANE_SOURCE_DIR "/build/data";
  if (std::filesystem::exists(data)) return data;
  const std::array<std::string_view, 1> words{"word"};
  std::ofstream(folder_ / "google_227800_words.bin") << savedWordList(words);
  return folder_;
}

Surroundings::~Surroundings() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void serveAsMainApplication() {
  field::FieldParts nowhere;
  auto configuration = desktop::DesktopConfiguration::fromEnvironment();
  configuration.ownProcess = {"Quorvane", "QVPX"_4cc, "APPL"_4cc, "com.tallowmere.quorvane"};
  desktop::DesktopHost host(configuration, nowhere.forPlatform());
  host.log().enabled = false;
  Instance instance(host.platform());
  std::uint32_t slot = 0;
  for (const auto& [key, size] : kSegments) {
    void* block = GETSAFEMEMBLOCK(instance, key, size, slot++);
    if (key == kToolCRecKey) writeInteractiveMode(block);
  }
  MessagePorts& ports = instance.platform().messagePorts;
  const auto port = ports.CFMessagePortCreateLocal(
      kBasicAppPortName, [](std::int32_t, const CFData*) { return std::nullopt; });
  CFRunLoop& loop = *host.runLoop().CFRunLoopGetCurrent();
  host.runLoop().CFRunLoopAddSource(loop, ports.CFMessagePortCreateRunLoopSource(port));
  const auto onEnd = host.runLoop().onSignal(SIGTERM, [&host] { host.runLoop().quit(); });
  const auto announcement = host.processRegistry().announce(configuration.ownProcess);
  host.runLoop().run();
}

void echo(int socket) {
  std::array<std::uint8_t, 256> packet{};
  for (;;) {
    const ssize_t size = ::recv(socket, packet.data(), packet.size(), 0);
    if (size <= 0) return;
    if (::send(socket, packet.data(), static_cast<std::size_t>(size), 0) < 0) return;
  }
}

}  // namespace quorvane::bench
