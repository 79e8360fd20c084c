#include "hosts/desktop/Alerts.h"

#include <algorithm>
#include <string>

#include "hosts/desktop/PrintableLine.h"

namespace quorvane::desktop {
namespace {

constexpr std::chrono::milliseconds kClosePatience{500};

}  // namespace

int Alerts::runModal(const NSAlert& alert) {
  if (log_.enabled) log_.writeLine(printableLine(alert.messageText + ": " + alert.informativeText));
  const int last = static_cast<int>(alert.buttons.size()) - 1;
  const std::shared_ptr<Notification> notification = Notification::show(alert);
  if (notification == nullptr) return NSAlertFirstButtonReturn + last;
  std::erase_if(open_, [](const auto& each) { return each.expired(); });
  open_.push_back(notification);
  const RunLoop::Deadline end = std::chrono::steady_clock::now() + patience;
  runLoop_.runUntil([&] { return !notification->isOpen() || (isEnding && isEnding()); },
                    std::min(end, withinKey.deadline()));
  if (!notification->answer()) takeDown(*notification);
  return NSAlertFirstButtonReturn + notification->answer().value_or(last);
}

void Alerts::close() {
  for (const auto& each : std::exchange(open_, {})) {
    if (const auto notification = each.lock()) takeDown(*notification);
  }
}

void Alerts::takeDown(Notification& notification) {
  notification.close();
  runLoop_.runUntil([&notification] { return notification.isGone(); },
                    std::chrono::steady_clock::now() + kClosePatience);
}

}  // namespace quorvane::desktop
