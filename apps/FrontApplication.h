#pragma once
// Which application is in front: the main one while its own window takes the keys, otherwise this
// one, whose text fields they then are for.

#include <filesystem>

#include "hosts/desktop/DesktopHost.h"
#include "src/base/Instance.h"

namespace quorvane {

class FrontApplication {
 public:
  /// Both references outlive this.
  FrontApplication(desktop::DesktopHost& host, Instance& instance,
                   const std::filesystem::path& runtimeFolder)
      : host_(host), instance_(instance), windowFile_(runtimeFolder / "window") {}

  /// True where the record says so and the window is there.
  [[nodiscard]] bool mainWindowTakesKeys();
  /// Puts the right one in front. False where it is there; what has changed is known once the run
  /// loop has turned.
  bool update();

 private:
  desktop::DesktopHost& host_;
  Instance& instance_;
  std::filesystem::path windowFile_;
};

}  // namespace quorvane
