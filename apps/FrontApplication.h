#pragma once
// Which application is in front: the main one while its own window takes the keys, otherwise the
// one whose text fields they then are for.

#include <filesystem>

#include "hosts/desktop/DesktopHost.h"
#include "src/base/Instance.h"

namespace quorvane {

class FrontApplication {
 public:
  /// Both references outlive this.
  FrontApplication(desktop::DesktopHost& host, Instance& instance,
                   const std::filesystem::path& runtimeFolder);

  /// Whose text fields keys are for, this process's at first.
  void setClient(std::int32_t pid) { client_ = pid; }
  [[nodiscard]] std::int32_t client() const { return client_; }
  /// True where the record says so and the window is there.
  [[nodiscard]] bool mainWindowTakesKeys();
  /// Puts the right one in front. False where it is there; what has changed is known once the run
  /// loop has turned.
  bool update();

 private:
  desktop::DesktopHost& host_;
  Instance& instance_;
  std::filesystem::path windowFile_;
  std::int32_t client_;
};

}  // namespace quorvane
