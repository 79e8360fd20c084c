#pragma once
// The application object, its user defaults, and the InputMethodKit objects made at start.

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "hosts/memory/MemoryJournal.h"
#include "platform/Application.h"
#include "platform/InputMethodKit.h"

namespace quorvane::memory {

class MemoryApplication : public Application {
 public:
  explicit MemoryApplication(MemoryJournal& journal) : journal_(journal) {}

  bool respondsToBeginActivity() override;
  void beginActivityWithOptions(std::uint64_t options, std::string_view reason) override;
  std::string bundleIdentifier() override;
  std::string bundleURL() override;
  bool loadNibNamed(std::string_view name, std::function<void()> awakeFromNib) override;
  void run() override;
  void exit(int status) override;
  double NSAppKitVersionNumber() override;

  bool hasBeginActivity = true;
  std::string identifier = "com.tallowmere.inputmethod.Quorvane";
  std::string url = "file:///Library/Input%20Methods/Quorvane.app/";
  std::set<std::string, std::less<>> nibs{"AnnotationWindow", "MainMenu"};
  double appKitVersion = 1894;
  /// What the run loop does inside `run`; without it `run` returns at once.
  std::function<void()> whileRunning;
  /// Of the first call of `exit`.
  std::optional<int> exitStatus;

 private:
  MemoryJournal& journal_;
};

class MemoryUserDefaults : public UserDefaults {
 public:
  explicit MemoryUserDefaults(MemoryJournal& journal) : journal_(journal) {}

  void setBool(bool value, std::string_view key) override;
  bool boolForKey(std::string_view key) override;

  std::map<std::string, bool, std::less<>> values;

 private:
  MemoryJournal& journal_;
};

class MemoryInputMethodKit : public InputMethodKit {
 public:
  explicit MemoryInputMethodKit(MemoryJournal& journal) : journal_(journal) {}

  std::unique_ptr<IMKServer> initWithName(std::string_view name,
                                          std::string_view bundleIdentifier) override;
  std::unique_ptr<IMKCandidates> initWithServer(IMKServer* server,
                                                IMKCandidatePanelType panelType) override;

  bool serverFails = false;
  bool candidatesFail = false;

 private:
  MemoryJournal& journal_;
};

}  // namespace quorvane::memory
