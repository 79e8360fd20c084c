#pragma once
// An alert is a notification with actions, where the session has a bus and somebody who shows them.

#include <functional>
#include <memory>
#include <vector>

#include "hosts/desktop/Notification.h"
#include "hosts/desktop/WithinKey.h"
#include "platform/Alerts.h"

namespace quorvane::desktop {

class Alerts final : public quorvane::Alerts {
 public:
  Alerts(RunLoop& runLoop, quorvane::LogSink& log) : runLoop_(runLoop), log_(log) {}

  int runModal(const NSAlert& alert) override;
  /// Takes what stands open off the screen, where there is anybody who takes it; nobody has
  /// answered it then.
  void close();

  /// The program has been asked to end; unset: it hasn't. Nobody answers then.
  std::function<bool()> isEnding;
  /// Whoever hasn't answered by then doesn't.
  std::chrono::milliseconds patience{60'000};
  /// Nobody answers then but within two seconds.
  WithinKey withinKey;

 private:
  void takeDown(Notification& notification);

  RunLoop& runLoop_;
  quorvane::LogSink& log_;
  std::vector<std::weak_ptr<Notification>> open_;  ///< one may come while another waits
};

}  // namespace quorvane::desktop
