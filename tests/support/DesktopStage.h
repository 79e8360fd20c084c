#pragma once
// A desktop host for one test, with a folder and shared-memory keys of its own.

#include <chrono>
#include <functional>
#include <memory>
#include <set>

#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/FieldParts.h"
#include "tests/support/RunningProgram.h"

namespace quorvane::tests {

/// No other test, and no other run of the tests, has this one.
std::uint32_t ownKeyOffset();

class DesktopStage {
 public:
  /// `configure` has the last word on the host's configuration.
  explicit DesktopStage(
      const std::function<void(desktop::DesktopConfiguration&)>& configure = nullptr);

  [[nodiscard]] desktop::DesktopHost& host() { return *host_; }
  [[nodiscard]] Platform platform() { return host_->platform(); }
  [[nodiscard]] const desktop::DesktopConfiguration& configuration() const {
    return configuration_;
  }
  [[nodiscard]] std::filesystem::path runtimeFile(std::string_view name) const {
    return configuration_.runtimeDirectory / name;
  }
  void turn() { host_->runLoop().runPending(); }
  /// Turns the loop until `condition` holds; false where it doesn't within ten seconds.
  template <class Condition>
  bool eventually(Condition condition) {
    return tests::eventually([&] {
      turn();
      return condition();
    });
  }
  /// As at the end of the program.
  void closeHost() { host_.reset(); }
  void openHost();

 private:
  OwnFolder folder_;
  field::FieldParts field_;  ///< whatever is posted stays in it
  desktop::DesktopConfiguration configuration_;
  std::unique_ptr<desktop::DesktopHost> host_;
};

/// A message without data for the port at this path.
void sendTo(const std::filesystem::path& path, FourCharCode message);
/// One for the input method `pid`, which keeps its files in `runtimeFolder`.
void sendToInputMethod(const std::filesystem::path& runtimeFolder, pid_t pid, FourCharCode message);

/// A child process that runs `work`, says so, and then waits to be killed. Killed and waited for at
/// the latest with this object.
class Child {
 public:
  explicit Child(const std::function<void()>& work);
  ~Child() { kill(); }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  [[nodiscard]] pid_t pid() const { return pid_; }
  void kill();

 private:
  pid_t pid_ = -1;
  bool running_ = true;
};

}  // namespace quorvane::tests
