#include "hosts/desktop/Workspace.h"

#include <algorithm>

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

std::unique_ptr<Registration> Workspace::addObserver(WorkspaceNotification name,
                                                     Observer observer) {
  return registry_.addObserver(name, std::move(observer));
}

}  // namespace quorvane::desktop
