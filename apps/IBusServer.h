#pragma once
// The resident input method under the text fields of the desktop's framework.

#include <chrono>
#include <optional>

#include "apps/ClientApplications.h"
#include "apps/RunningSystem.h"
#include "hosts/desktop/Notification.h"
#include "hosts/ibus/Engine.h"
#include "hosts/ibus/MenuProperties.h"
#include "hosts/ibus/PanelView.h"
#include "hosts/ibus/PressedKeys.h"

namespace quorvane {

class IBusServer {
 public:
  /// Throws std::runtime_error where the daemon can't be reached. `system` outlives this.
  explicit IBusServer(RunningSystem& system);
  IBusServer(const IBusServer&) = delete;
  IBusServer& operator=(const IBusServer&) = delete;

  /// Until a signal comes or the daemon goes. `again`: clients that had one before get this one.
  void run(bool again);

 private:
  [[nodiscard]] ibus::Attendants attendants();
  [[nodiscard]] ibus::PanelEvents panelEvents();
  [[nodiscard]] ibus::PressedKeysParts pressedKeysParts();
  bool isQuiet();
  bool turn();
  void choose(const std::string& property);
  void registerMenu();
  void giveUp(std::string_view why);

  RunningSystem& system_;
  ClientApplications applications_;
  ibus::Engine engine_;
  ibus::PressedKeys pressed_;
  ibus::InputContexts contexts_;
  ibus::PanelView panel_;
  ibus::MenuProperties menu_;
  std::unique_ptr<desktop::Notification> told_;  ///< why a command was given up
  std::chrono::steady_clock::time_point latestKey_;
  std::unique_ptr<Registration> quiet_;  ///< looks again; null: nothing waits
  bool over_ = false;
};

}  // namespace quorvane
