#include "tests/support/DesktopStage.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "hosts/desktop/MessageFraming.h"
#include "hosts/desktop/PacketSocket.h"

namespace quorvane::tests {

std::uint32_t ownKeyOffset() {
  static std::uint32_t count = 0;
  constexpr std::uint32_t kApart = 1024;  // more than the keys lie apart from one another
  return 0x20000000U + static_cast<std::uint32_t>(getpid()) * 4 * kApart + (count++ % 4) * kApart;
}

DesktopStage::DesktopStage(const std::function<void(desktop::DesktopConfiguration&)>& configure) {
  configuration_.keyOffset = ownKeyOffset();
  configuration_.runtimeDirectory = folder_.path() / "run";
  configuration_.configDirectory = folder_.path() / "config";
  configuration_.bundleDirectory = folder_.path() / "bundle";
  configuration_.homeDirectory = folder_.path() / "home";
  configuration_.cacheDirectory = folder_.path() / "cache";
  configuration_.dataDirectory = folder_.path() / "data";
  configuration_.preferencesDirectory = folder_.path() / "preferences";
  configuration_.applicationsDirectory = folder_.path() / "applications";
  if (configure) configure(configuration_);
  openHost();
}

void DesktopStage::openHost() {
  host_ = std::make_unique<desktop::DesktopHost>(configuration_, field_.forPlatform());
}

void sendTo(const std::filesystem::path& path, FourCharCode message) {
  const auto packet = desktop::encodeRequestHeader(static_cast<std::int32_t>(message), false);
  if (desktop::sendPacket(desktop::connectTo(path).get(), packet, {}) != desktop::Transfer::Done) {
    throw std::runtime_error("the message can't be sent");
  }
}

void sendToInputMethod(const std::filesystem::path& runtimeFolder, pid_t pid,
                       FourCharCode message) {
  sendTo(runtimeFolder / ("Q7T2M4K9W1.com.tallowmere.QorvInPortServer1" + std::to_string(pid)),
         message);
}

Child::Child(const std::function<void()>& work) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  pid_ = fork();
  if (pid_ == 0) {
    work();
    const bool said = write(ends[1], "x", 1) == 1;
    while (said) pause();
    _exit(1);
  }
  close(ends[1]);
  char byte = 0;
  const bool heard = read(ends[0], &byte, 1) == 1;
  close(ends[0]);
  if (!heard) throw std::runtime_error("the child failed");
}

void Child::kill() {
  if (!std::exchange(running_, false)) return;
  ::kill(pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
}

}  // namespace quorvane::tests
