// The memory host under the suites that every host must pass.

#include "hosts/memory/MemoryHost.h"
#include "tests/conformance/CatalogConformance.h"
#include "tests/conformance/FilesConformance.h"
#include "tests/conformance/MessagePortsConformance.h"
#include "tests/conformance/ProcessesConformance.h"
#include "tests/conformance/ResourcesConformance.h"
#include "tests/conformance/SharedMemoryConformance.h"

namespace quorvane::conformance {
namespace {

struct MemoryStage : HostStage {
  Platform platform() override { return host.platform(); }
  void turn() override { host.runPending(); }
  std::string folder() override { return host.files.homeDirectory; }

  std::string supportFolder() override { return host.files.applicationSupportFolder; }
  void putFile(const std::string& path, resources::FinderInfo info,
               const resources::ResourceFork& fork) override {
    if (!host.files.has(path)) host.files.put(path, "data");
    host.files.putResources(path, info, fork);
  }
  resources::AppleDouble resourcesOf(const std::string& path) override {
    const auto data = host.files.dataWithContentsOfFile(resources::appleDoublePath(path));
    return resources::readAppleDouble(data->bytes()).value.value();
  }
  void makeFolder(const std::string& path) override { host.files.makeFolder(path); }
  void rename(const std::string& from, const std::string& to) override {
    host.files.rename(from, to);
  }
  void remove(const std::string& path) override { host.files.remove(path); }

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
    memory::MemoryProcess instance;
    instance.name = std::move(name);
    instance.signature = signature;
    instance.bundleIdentifier = std::move(bundle);
    return host.processes.find(host.processes.add(instance))->pid;
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

std::unique_ptr<HostStage> make() { return std::make_unique<MemoryStage>(); }

INSTANTIATE_TEST_SUITE_P(Memory, CatalogConformance, testing::Values(make));
INSTANTIATE_TEST_SUITE_P(Memory, FilesConformance, testing::Values(make));
INSTANTIATE_TEST_SUITE_P(Memory, MessagePortsConformance, testing::Values(make));
INSTANTIATE_TEST_SUITE_P(Memory, ProcessesConformance, testing::Values(make));
INSTANTIATE_TEST_SUITE_P(Memory, ResourcesConformance, testing::Values(make));
INSTANTIATE_TEST_SUITE_P(Memory, SharedMemoryConformance, testing::Values(make));

}  // namespace
}  // namespace quorvane::conformance
