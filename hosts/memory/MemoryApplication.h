#pragma once
// The application object, its annotation window and its user defaults.

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "hosts/field/AnnotationWindow.h"
#include "hosts/journal/Journal.h"
#include "platform/Application.h"
#include "platform/UserDefaults.h"

namespace quorvane::memory {

class MemoryApplication : public Application {
 public:
  explicit MemoryApplication(Journal& journal) : annotationWindow(&journal), journal_(journal) {}

  bool respondsToBeginActivity() override;
  void beginActivityWithOptions(std::uint64_t options, std::string_view reason) override;
  std::string bundleIdentifier() override;
  std::string bundleURL() override;
  bool loadNibNamed(std::string_view name,
                    std::function<void(const NibOutlets&)> awakeFromNib) override;
  /// Nothing here activates or hides the application.
  [[nodiscard]] std::unique_ptr<Registration> addObserver(NSApplicationNotification name,
                                                          std::function<void()> observer) override;
  void run() override;
  void exit(int status) override;
  double NSAppKitVersionNumber() override;
  NSOperatingSystemVersion operatingSystemVersion() override;

  bool hasBeginActivity = true;
  std::string identifier = "com.tallowmere.inputmethod.Quorvane";
  std::string url = "file:///Library/Input%20Methods/Quorvane.app/";
  std::set<std::string, std::less<>> nibs{"AnnotationWindow", "MainMenu"};
  // These two go together.
  double appKitVersion = 1894;
  NSOperatingSystemVersion systemVersion{10, 15};
  /// What the nib "AnnotationWindow" holds.
  field::AnnotationWindow annotationWindow;
  /// What the nib "MainMenu" holds, once it has been loaded.
  std::unique_ptr<NSMenu> menu;
  /// What the run loop does inside `run`; without it `run` returns at once.
  std::function<void()> whileRunning;
  /// Of the first call of `exit`.
  std::optional<int> exitStatus;

 private:
  NibOutlets outletsOf(std::string_view nib);

  Journal& journal_;
};

class MemoryUserDefaults : public UserDefaults {
 public:
  explicit MemoryUserDefaults(Journal& journal) : journal_(journal) {}

  void setBool(bool value, std::string_view key) override;
  bool boolForKey(std::string_view key) override;

  std::map<std::string, bool, std::less<>> values;

 private:
  Journal& journal_;
};

}  // namespace quorvane::memory
