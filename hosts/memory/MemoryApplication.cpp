#include "hosts/memory/MemoryApplication.h"

namespace quorvane::memory {

void MemoryAnnotationWindow::orderFront() {
  journal_.call("NSPanel orderFront");
  AnnotationWindow::orderFront();
}

void MemoryAnnotationWindow::setLevel(std::int64_t level) {
  journal_.call("NSPanel setLevel ", level);
  AnnotationWindow::setLevel(level);
}

void MemoryAnnotationWindow::setCollectionBehavior(std::uint64_t behavior) {
  journal_.call("NSPanel setCollectionBehavior ", behavior);
  AnnotationWindow::setCollectionBehavior(behavior);
}

void MemoryAnnotationWindow::setStyleMask(std::uint64_t mask) {
  journal_.call("NSPanel setStyleMask ", mask);
  AnnotationWindow::setStyleMask(mask);
}

void MemoryAnnotationWindow::setFrameTopLeftPoint(NSPoint point) {
  journal_.call("NSPanel setFrameTopLeftPoint ", point.x, " ", point.y);
  AnnotationWindow::setFrameTopLeftPoint(point);
}

void MemoryAnnotationWindow::setAlphaValue(double value) {
  journal_.call("NSPanel setAlphaValue ", value);
  AnnotationWindow::setAlphaValue(value);
}

void MemoryAnnotationWindow::setStringValue(const std::u16string& text) {
  journal_.call("NSTextField setStringValue");
  AnnotationWindow::setStringValue(text);
}

bool MemoryApplication::respondsToBeginActivity() {
  journal_.call("respondsToBeginActivity");
  return hasBeginActivity;
}

void MemoryApplication::beginActivityWithOptions(std::uint64_t options, std::string_view reason) {
  journal_.call("beginActivityWithOptions ", Hex{options}, " \"", reason, "\"");
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
  NibOutlets outlets;
  if (name == "AnnotationWindow") outlets = {&annotationWindow, &annotationWindow};
  if (awakeFromNib) awakeFromNib(outlets);
  return true;
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
