#pragma once
// An alert is a notification with actions, where the session has a bus and somebody who shows them.

#include <functional>

#include "hosts/desktop/RunLoop.h"
#include "platform/Alerts.h"

namespace quorvane::desktop {

class Alerts final : public quorvane::Alerts {
 public:
  Alerts(RunLoop& runLoop, quorvane::LogSink& log) : runLoop_(runLoop), log_(log) {}

  int runModal(const NSAlert& alert) override;

  /// The program has been asked to end; unset: it hasn't. Nobody answers then.
  std::function<bool()> isEnding;
  /// Whoever hasn't answered by then doesn't.
  std::chrono::milliseconds patience{60'000};

 private:
  RunLoop& runLoop_;
  quorvane::LogSink& log_;
};

}  // namespace quorvane::desktop
