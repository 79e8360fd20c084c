// The memory host under the suites that every host must pass.

#include "hosts/memory/MemoryHost.h"
#include "tests/conformance/MessagePortsConformance.h"
#include "tests/conformance/ProcessesConformance.h"
#include "tests/conformance/ServicesConformance.h"
#include "tests/conformance/SharedMemoryConformance.h"
#include "tests/conformance/TextEncodingConformance.h"
#include "tests/conformance/UserDefaultsConformance.h"

namespace quorvane::conformance {
namespace {

struct MemoryStage : SharedMemoryStage,
                     MessagePortsStage,
                     ProcessesStage,
                     ServicesStage,
                     TextEncodingStage,
                     UserDefaultsStage {
  Platform platform() override { return host.platform(); }
  std::string folder() override { return host.files.homeDirectory; }
  SharedMemory& sharedMemory() override { return host.sharedMemory; }
  UserDefaults& userDefaults() override { return host.userDefaults; }
  TextEncoding& textEncoding() override { return host.textEncoding; }
  MessagePorts& ports() override { return host.messagePorts; }
  RunLoop& runLoop() override { return host.messagePorts; }
  ProcessManager& processManager() override { return host.processes; }
  Workspace& workspace() override { return host.processes; }
  void turn() override { host.runPending(); }

  void serveElsewhere(std::string_view name, CFMessagePortCallBack callback) override {
    memory::MemoryServer server;
    server.silent = callback == nullptr;
    server.answer = [callback](std::int32_t id, const CFData& data) -> std::optional<CFData> {
      if (callback == nullptr) return std::nullopt;
      return callback(id, data.empty() ? nullptr : &data);
    };
    host.messagePorts.serve(name, server);
  }
  void stopElsewhere(std::string_view name) override { host.messagePorts.stopServing(name); }

  std::int32_t launch(std::string name, FourCharCode signature, std::string bundle) override {
    memory::MemoryProcess process;
    process.name = std::move(name);
    process.signature = signature;
    process.bundleIdentifier = std::move(bundle);
    const ProcessSerialNumber psn = host.processes.add(process);
    return host.processes.find(psn)->pid;
  }
  void quit(std::int32_t pid) override { host.processes.remove(psnOf(pid)); }
  void bringToFront(std::int32_t pid) override { host.processes.setFront(psnOf(pid)); }

  ProcessSerialNumber psnOf(std::int32_t pid) {
    ProcessSerialNumber psn;
    host.processes.GetProcessForPID(pid, psn);
    return psn;
  }

  memory::MemoryHost host;
};

template <class Stage>
std::unique_ptr<Stage> make() {
  return std::make_unique<MemoryStage>();
}

INSTANTIATE_TEST_SUITE_P(Memory, SharedMemoryConformance, testing::Values(make<SharedMemoryStage>));
INSTANTIATE_TEST_SUITE_P(Memory, MessagePortsConformance, testing::Values(make<MessagePortsStage>));
INSTANTIATE_TEST_SUITE_P(Memory, ProcessesConformance, testing::Values(make<ProcessesStage>));
INSTANTIATE_TEST_SUITE_P(Memory, ServicesConformance, testing::Values(make<ServicesStage>));
INSTANTIATE_TEST_SUITE_P(Memory, UserDefaultsConformance, testing::Values(make<UserDefaultsStage>));
INSTANTIATE_TEST_SUITE_P(Memory, TextEncodingConformance, testing::Values(make<TextEncodingStage>));

}  // namespace
}  // namespace quorvane::conformance
