#include "tools/checker/PasteRequest.h"

#include <array>
#include <span>
#include <stdexcept>

#include "hosts/desktop/ClipboardFile.h"
#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/FieldParts.h"
#include "src/base/BigEndian.h"
#include "tools/checker/Checker.h"
#include "tools/checker/InputMethods.h"
#include "tools/checker/ToolRecord.h"

namespace quorvane::checker {

namespace {

class AttachedToolRecord {
 public:
  explicit AttachedToolRecord(SharedMemory& memory) : memory_(memory) {
    const int id = memory.shmget(kToolKey, kToolRecordSize, 0);
    if (id >= 0) address_ = memory.shmat(id, nullptr, 0);
    if (memory.attachedSize(address_) < kToolRecordSize) {
      throw std::runtime_error("no main application runs: start `quorvane checker` first");
    }
  }
  ~AttachedToolRecord() { memory_.shmdt(address_); }
  AttachedToolRecord(const AttachedToolRecord&) = delete;
  AttachedToolRecord& operator=(const AttachedToolRecord&) = delete;

  [[nodiscard]] ToolRecord record() const {
    return ToolRecord({static_cast<std::uint32_t*>(address_), kToolRecordSize / 4});
  }

 private:
  SharedMemory& memory_;
  void* address_ = kShmFailed;
};

std::int32_t onlyInputMethod(desktop::ProcessRegistry& registry) {
  registry.refresh();
  const auto running = runningInputMethods(registry);
  if (running.size() == 1) return running.front();
  throw std::runtime_error("there must be one input method; " + std::to_string(running.size()) +
                           " run");
}

std::array<std::uint8_t, 4> bigEndianBytes(std::int32_t number) {
  std::array<std::uint8_t, sizeof(number)> bytes{};
  putBigEndian(bytes, 0, number);
  return bytes;
}

}  // namespace

void requestPaste(Paste paste, std::int32_t pid) {
  auto configuration = desktop::DesktopConfiguration::fromEnvironment();
  configuration.ownProcess = checkerAnnouncement();
  field::FieldParts nowhere;
  desktop::DesktopHost host(configuration, nowhere.forPlatform());
  Platform platform = host.platform();
  const AttachedToolRecord tool(platform.sharedMemory);
  const auto port = platform.messagePorts.CFMessagePortCreateRemote(
      inputMethodPortName(desktop::serialNumberOf(onlyInputMethod(host.processRegistry()))));
  if (port == nullptr) throw std::runtime_error("the input method serves no port");
  desktop::ClipboardFile(configuration.runtimeDirectory, host.log()).takeLent();  // isn't meant
  tool.record().put(At::ClipState, kRestoreArmed);
  const auto payload = bigEndianBytes(pid);
  const std::int32_t result = platform.messagePorts.CFMessagePortSendRequest(
      *port, static_cast<std::int32_t>(paste), payload, Seconds(1), Seconds(0), nullptr);
  if (result == kCFMessagePortSuccess) return;
  tool.record().put(At::ClipState, 0);
  throw std::runtime_error("the input method takes no message");
}

}  // namespace quorvane::checker
