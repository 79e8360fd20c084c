#include "hosts/desktop/Alerts.h"

#include <string>

#include "hosts/desktop/Notification.h"

namespace quorvane::desktop {

int Alerts::runModal(const NSAlert& alert) {
  if (log_.enabled) log_.writeLine(alert.messageText + ": " + alert.informativeText);
  const int last = static_cast<int>(alert.buttons.size()) - 1;
  const auto notification = Notification::show(alert);
  if (notification == nullptr) return NSAlertFirstButtonReturn + last;
  runLoop_.runUntil([&] { return !notification->isOpen() || (isEnding && isEnding()); },
                    std::chrono::steady_clock::now() + patience);
  return NSAlertFirstButtonReturn + notification->answer().value_or(last);
}

}  // namespace quorvane::desktop
