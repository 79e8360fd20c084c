#include "tools/applications/Companion.h"

#include <csignal>
#include <memory>
#include <stdexcept>
#include <string>

#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/FieldParts.h"

namespace quorvane::applications {
namespace {

constexpr std::int32_t kQuitMessage = "gMen"_4cc;

desktop::Announcement announcementOf(const Companion& companion) {
  return {companion.name, companion.signature, "APPL"_4cc, companion.bundleIdentifier};
}

void requireAlone(desktop::DesktopHost& host, const Companion& companion) {
  if (host.processRegistry().findSignature(companion.signature) == nullptr) return;
  throw std::runtime_error(std::string(companion.name) + " is running already");
}

/// Two that begin at once see each other.
std::unique_ptr<Registration> announceAlone(desktop::DesktopHost& host,
                                            const desktop::DesktopConfiguration& configuration,
                                            const Companion& companion) {
  const desktop::Descriptor lock = desktop::RuntimeFolder(configuration.runtimeDirectory).lock();
  host.processRegistry().refresh();
  requireAlone(host, companion);
  return host.processRegistry().announce(configuration.ownProcess);
}

void servePort(desktop::DesktopHost& host, std::string_view name) {
  const Platform platform = host.platform();
  const auto port = platform.messagePorts.CFMessagePortCreateLocal(
      name, [&host](std::int32_t message, const CFData* /*data*/) -> std::optional<CFData> {
        if (message == kQuitMessage) host.runLoop().quit();
        return std::nullopt;
      });
  const auto source = port ? platform.messagePorts.CFMessagePortCreateRunLoopSource(port) : nullptr;
  CFRunLoop* const loop = platform.runLoop.CFRunLoopGetCurrent();
  if (source == nullptr || loop == nullptr) {
    throw std::runtime_error("can't serve the port " + std::string(name));
  }
  platform.runLoop.CFRunLoopAddSource(*loop, source);
}

}  // namespace

void runCompanion(const Companion& companion) {
  auto configuration = desktop::DesktopConfiguration::fromEnvironment();
  configuration.ownProcess = announcementOf(companion);
  field::FieldParts nowhere;  // it presses no key
  desktop::DesktopHost host(configuration, nowhere.forPlatform());
  const auto end = [&host] { host.runLoop().quit(); };
  const auto onInterrupt = host.runLoop().onSignal(SIGINT, end);
  const auto onTerminate = host.runLoop().onSignal(SIGTERM, end);
  const auto onHangUp = host.runLoop().onSignal(SIGHUP, end);
  requireAlone(host, companion);
  if (!companion.port.empty()) servePort(host, companion.port);
  const auto announcement = announceAlone(host, configuration, companion);
  host.runLoop().run();
}

}  // namespace quorvane::applications
