#pragma once

#include "hosts/desktop/RunLoop.h"
#include "platform/Alerts.h"

namespace quorvane::desktop {

class Alerts final : public quorvane::Alerts {
 public:
  explicit Alerts(quorvane::LogSink& log) : log_(log) {}

  int runModal(const NSAlert& alert) override;

 private:
  quorvane::LogSink& log_;
};

}  // namespace quorvane::desktop
