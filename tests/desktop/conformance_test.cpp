// The desktop host under the suites that every host must pass.

#include <fstream>
#include <map>

#include "hosts/desktop/AppleDoubleFile.h"
#include "hosts/desktop/AtomicFile.h"
#include "tests/conformance/CatalogConformance.h"
#include "tests/conformance/FilesConformance.h"
#include "tests/conformance/MessagePortsConformance.h"
#include "tests/conformance/ProcessesConformance.h"
#include "tests/conformance/ResourcesConformance.h"
#include "tests/conformance/SharedMemoryConformance.h"
#include "tests/support/DesktopStage.h"

namespace quorvane::conformance {
namespace {

class Stage : public HostStage {
 public:
  Platform platform() override { return desktop_.platform(); }
  void turn() override { desktop_.turn(); }
  std::string folder() override { return desktop_.configuration().homeDirectory; }

  std::string supportFolder() override {
    makeFolder(desktop_.configuration().dataDirectory);
    return desktop_.configuration().dataDirectory;
  }
  void putFile(const std::string& path, resources::FinderInfo info,
               const resources::ResourceFork& fork) override {
    std::ofstream(path) << "data";
    desktop::updateAppleDouble(path, [&](resources::AppleDouble& file) {
      file.setFinderInfo(info);
      file.contentOf(resources::kResourceForkEntry) = writeResourceFork(fork).value.value();
    });
  }
  resources::AppleDouble resourcesOf(const std::string& path) override {
    return resources::readAppleDouble(desktop::readAppleDoubleFile(path).value()).value.value();
  }
  void makeFolder(const std::string& path) override { std::filesystem::create_directories(path); }
  void rename(const std::string& from, const std::string& to) override {
    std::filesystem::rename(from, to);
  }
  void remove(const std::string& path) override { std::filesystem::remove_all(path); }

  void serveElsewhere(std::string_view name, CFMessagePortCallBack callback) override {
    auto& loop = desktop_.host().runLoop();
    Elsewhere& elsewhere = elsewhere_[std::string(name)];
    elsewhere.ports = std::make_unique<desktop::MessagePorts>(folder_, loop, desktop_.host().log());
    elsewhere.port = elsewhere.ports->CFMessagePortCreateLocal(name, callback);
    ASSERT_NE(elsewhere.port, nullptr);
    if (callback == nullptr) return;
    const auto source = elsewhere.ports->CFMessagePortCreateRunLoopSource(elsewhere.port);
    loop.CFRunLoopAddSource(*loop.CFRunLoopGetCurrent(), source);
  }
  void stopElsewhere(std::string_view name) override {
    elsewhere_.erase(std::string(name));
    turn();
  }

  std::int32_t launch(std::string name, FourCharCode signature, std::string bundle) override {
    const auto folder = desktop_.configuration().runtimeDirectory;
    auto child = std::make_unique<tests::Child>([&] {
      const auto content =
          desktop::formatAnnouncement({getpid(), {name, signature, "APPL"_4cc, bundle}});
      desktop::writeFileAtomically(folder / desktop::announcementFileName(getpid()), *content,
                                   desktop::Durability::UntilReboot);
    });
    const pid_t pid = child->pid();
    children_[pid] = std::move(child);
    return pid;
  }
  void quit(std::int32_t pid) override { children_.erase(pid); }
  void bringToFront(std::int32_t pid) override {
    desktop_.host().processRegistry().setFrontApplication(pid);
  }

 private:
  struct Elsewhere {
    std::unique_ptr<desktop::MessagePorts> ports;
    std::shared_ptr<CFMessagePort> port;
  };

  tests::DesktopStage desktop_;
  desktop::RuntimeFolder folder_{desktop_.configuration().runtimeDirectory};
  std::map<std::string, Elsewhere> elsewhere_;
  std::map<pid_t, std::unique_ptr<tests::Child>> children_;
};

std::unique_ptr<HostStage> make() { return std::make_unique<Stage>(); }

INSTANTIATE_TEST_SUITE_P(Desktop, CatalogConformance, testing::Values(make));
INSTANTIATE_TEST_SUITE_P(Desktop, FilesConformance, testing::Values(make));
INSTANTIATE_TEST_SUITE_P(Desktop, MessagePortsConformance, testing::Values(make));
INSTANTIATE_TEST_SUITE_P(Desktop, ProcessesConformance, testing::Values(make));
INSTANTIATE_TEST_SUITE_P(Desktop, ResourcesConformance, testing::Values(make));
INSTANTIATE_TEST_SUITE_P(Desktop, SharedMemoryConformance, testing::Values(make));

}  // namespace
}  // namespace quorvane::conformance
