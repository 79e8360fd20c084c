#pragma once
// Keeps the file up to date by which `quorvane status` looks into this process.

#include <chrono>
#include <functional>

#include "hosts/desktop/StatusFile.h"
#include "hosts/field/TextApplication.h"
#include "src/base/Instance.h"

namespace quorvane {

class StatusKeeper final : public field::EventWatch {
 public:
  /// `instance` outlives this.
  StatusKeeper(Instance& instance, const std::filesystem::path& runtimeFolder,
               std::uint32_t keyOffset);

  void begins(const NSEvent& event) override;
  void ends(const NSEvent& event, field::Outcome outcome) override;
  /// Takes in what has come about between events. Costs no system call.
  void update();

  /// Says what the text fields are; unset: they are of this process.
  std::function<void(desktop::InputMethodStatus&)> tellOfFields;

 private:
  using SteadyClock = std::chrono::steady_clock;

  [[nodiscard]] std::uint64_t microsecondsSinceKey() const;
  void takeFixes();
  void takeFront();

  Instance& instance_;
  desktop::InputMethodStatus status_;
  desktop::StatusFile file_;
  SteadyClock::time_point key_;  ///< when the latest one began
};

}  // namespace quorvane
