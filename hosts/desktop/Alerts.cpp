#include "hosts/desktop/Alerts.h"

#include <string>

namespace quorvane::desktop {

int Alerts::runModal(const NSAlert& alert) {
  if (log_.enabled) log_.writeLine(alert.messageText + ": " + alert.informativeText);
  return NSAlertFirstButtonReturn + static_cast<int>(alert.buttons.size()) - 1;
}

}  // namespace quorvane::desktop
