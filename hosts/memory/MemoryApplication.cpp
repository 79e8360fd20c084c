#include "hosts/memory/MemoryApplication.h"

#include "hosts/menu/MainMenu.h"

namespace quorvane::memory {

bool MemoryApplication::respondsToBeginActivity() {
  journal_.call("respondsToBeginActivity");
  return hasBeginActivity;
}

void MemoryApplication::beginActivityWithOptions(std::uint64_t options, std::string_view reason) {
  journal_.call("beginActivityWithOptions ", Journal::Hex{options}, " \"", reason, "\"");
}

std::string MemoryApplication::bundleIdentifier() {
  journal_.call("bundleIdentifier");
  return identifier;
}

std::string MemoryApplication::bundleURL() {
  journal_.call("bundleURL");
  return url;
}

bool MemoryApplication::loadNibNamed(std::string_view name,
                                     std::function<void(const NibOutlets&)> awakeFromNib) {
  const std::size_t line = journal_.call("loadNibNamed ", name);
  if (!nibs.contains(name)) return journal_.result(line, false);
  if (awakeFromNib) awakeFromNib(outletsOf(name));
  return true;
}

NibOutlets MemoryApplication::outletsOf(std::string_view nib) {
  if (nib == "AnnotationWindow") return {.panel = &annotationWindow, .view = &annotationWindow};
  if (nib != "MainMenu") return {};
  menu = loadMainMenu();
  return {.menu = menu.get()};
}

std::unique_ptr<Registration> MemoryApplication::addObserver(NSApplicationNotification name,
                                                             std::function<void()> /*observer*/) {
  const bool active = name == NSApplicationNotification::DidBecomeActive;
  journal_.call("addObserver ", active ? "didBecomeActive" : "didHide", " NSApp");
  return std::make_unique<Registration>();
}

void MemoryApplication::run() {
  journal_.call("run");
  if (whileRunning) whileRunning();
}

void MemoryApplication::exit(int status) {
  journal_.call("exit ", status);
  if (!exitStatus) exitStatus = status;
}

double MemoryApplication::NSAppKitVersionNumber() {
  journal_.count();
  return appKitVersion;
}

NSOperatingSystemVersion MemoryApplication::operatingSystemVersion() {
  journal_.count();
  return systemVersion;
}

void MemoryUserDefaults::setBool(bool value, std::string_view key) {
  journal_.call("setBool ", value ? "YES " : "NO ", key);
  values[std::string(key)] = value;
}

bool MemoryUserDefaults::boolForKey(std::string_view key) {
  const std::size_t line = journal_.call("boolForKey ", key);
  const auto found = values.find(key);
  return journal_.result(line, found != values.end() && found->second);
}

}  // namespace quorvane::memory
