#pragma once

#include "hosts/desktop/ProcessRegistry.h"
#include "platform/Workspace.h"

namespace quorvane::desktop {

class Workspace final : public quorvane::Workspace {
 public:
  explicit Workspace(ProcessRegistry& registry) : registry_(registry) {}

  std::span<const NSRunningApplication> runningApplications() override;
  const NSRunningApplication* frontmostApplication() override;
  const NSRunningApplication* menuBarOwningApplication() override;
  [[nodiscard]] std::unique_ptr<Registration> addObserver(WorkspaceNotification name,
                                                          Observer observer) override;

 private:
  ProcessRegistry& registry_;
};

}  // namespace quorvane::desktop
