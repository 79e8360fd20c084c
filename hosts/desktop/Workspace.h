#pragma once

#include "hosts/desktop/ProcessRegistry.h"
#include "hosts/desktop/Supervisor.h"
#include "platform/Workspace.h"

namespace quorvane::desktop {

class Workspace final : public quorvane::Workspace {
 public:
  Workspace(ProcessRegistry& registry, Supervisor& supervisor)
      : registry_(registry), supervisor_(supervisor) {}

  std::span<const NSRunningApplication> runningApplications() override;
  const NSRunningApplication* frontmostApplication() override;
  const NSRunningApplication* menuBarOwningApplication() override;
  /// In whatever shows such addresses here: `bundleIdentifier` names a program of another system.
  bool openURLs(const std::string& address, std::string_view bundleIdentifier,
                std::uint32_t options) override;
  bool openURL(const std::string& address) override;
  bool launchApplication(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<Registration> addObserver(WorkspaceNotification name,
                                                          Observer observer) override;

 private:
  ProcessRegistry& registry_;
  Supervisor& supervisor_;
};

}  // namespace quorvane::desktop
