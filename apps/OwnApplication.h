#pragma once
// The application object of a program: the desktop's, with a life of its own to run and to end.

#include <functional>
#include <memory>
#include <utility>

#include "platform/Application.h"

namespace quorvane {

class OwnApplication final : public Application {
 public:
  /// `body` is what `run` does; `cleanUp` comes before the end by `exit`, which no destructor sees.
  OwnApplication(Application& inner, std::function<void()> body, std::function<void()> cleanUp)
      : inner_(inner), body_(std::move(body)), cleanUp_(std::move(cleanUp)) {}

  void run() override { body_(); }
  void exit(int status) override {
    cleanUp_();
    inner_.exit(status);
  }

  bool respondsToBeginActivity() override { return inner_.respondsToBeginActivity(); }
  void beginActivityWithOptions(std::uint64_t options, std::string_view reason) override {
    inner_.beginActivityWithOptions(options, reason);
  }
  std::string bundleIdentifier() override { return inner_.bundleIdentifier(); }
  std::string bundleURL() override { return inner_.bundleURL(); }
  bool loadNibNamed(std::string_view name,
                    std::function<void(const NibOutlets&)> awakeFromNib) override {
    return inner_.loadNibNamed(name, std::move(awakeFromNib));
  }
  std::unique_ptr<Registration> addObserver(NSApplicationNotification name,
                                            std::function<void()> observer) override {
    return inner_.addObserver(name, std::move(observer));
  }
  double NSAppKitVersionNumber() override { return inner_.NSAppKitVersionNumber(); }
  NSOperatingSystemVersion operatingSystemVersion() override {
    return inner_.operatingSystemVersion();
  }

 private:
  Application& inner_;
  std::function<void()> body_;
  std::function<void()> cleanUp_;
};

}  // namespace quorvane
