#include "hosts/desktop/Workspace.h"

#include <glib.h>

#include <algorithm>
#include <array>

namespace quorvane::desktop {

std::span<const NSRunningApplication> Workspace::runningApplications() {
  return registry_.runningApplications();
}

const NSRunningApplication* Workspace::frontmostApplication() {
  const auto applications = registry_.runningApplications();
  const auto front = std::ranges::find_if(applications, &NSRunningApplication::isActive);
  return front == applications.end() ? nullptr : &*front;
}

const NSRunningApplication* Workspace::menuBarOwningApplication() { return frontmostApplication(); }

bool Workspace::openURLs(const std::string& address, std::string_view /*bundleIdentifier*/,
                         std::uint32_t /*options*/) {
  return openURL(address);
}

bool Workspace::openURL(const std::string& address) {
  std::string program = "xdg-open";
  std::string argument = address;
  std::array<char*, 3> arguments{program.data(), argument.data(), nullptr};
  const int flags = G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL;
  return g_spawn_async(nullptr, arguments.data(), nullptr, static_cast<GSpawnFlags>(flags), nullptr,
                       nullptr, nullptr, nullptr) != FALSE;
}

bool Workspace::launchApplication(const std::string& path) {
  return supervisor_.launch(path) == noErr;
}

std::unique_ptr<Registration> Workspace::addObserver(WorkspaceNotification name,
                                                     Observer observer) {
  return registry_.addObserver(name, std::move(observer));
}

}  // namespace quorvane::desktop
