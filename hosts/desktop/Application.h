#pragma once

#include "hosts/desktop/RunLoop.h"
#include "platform/Application.h"

namespace quorvane::desktop {

class Application final : public quorvane::Application {
 public:
  /// `cleanUp` runs before the process ends by `exit`.
  Application(RunLoop& runLoop, const NibOutlets& annotationWindow, std::function<void()> cleanUp);

  /// This system puts no process to sleep for being in the background.
  bool respondsToBeginActivity() override { return false; }
  void beginActivityWithOptions(std::uint64_t options, std::string_view reason) override;
  std::string bundleIdentifier() override;
  /// The running program as a file URL.
  std::string bundleURL() override;
  bool loadNibNamed(std::string_view name,
                    std::function<void(const NibOutlets&)> awakeFromNib) override;
  /// Never called: nothing activates or hides a process without windows.
  [[nodiscard]] std::unique_ptr<Registration> addObserver(NSApplicationNotification name,
                                                          std::function<void()> observer) override;
  void run() override;
  [[noreturn]] void exit(int status) override;
  double NSAppKitVersionNumber() override;
  NSOperatingSystemVersion operatingSystemVersion() override;

 private:
  NibOutlets outletsOf(std::string_view nib);

  RunLoop& runLoop_;
  NibOutlets annotationWindow_;
  std::unique_ptr<NSMenu> menu_;  ///< what the nib "MainMenu" holds, once it has been loaded
  std::function<void()> cleanUp_;
};

}  // namespace quorvane::desktop
