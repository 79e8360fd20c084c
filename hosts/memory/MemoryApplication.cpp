#include "hosts/memory/MemoryApplication.h"

namespace quorvane::memory {

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

bool MemoryApplication::loadNibNamed(std::string_view name, std::function<void()> awakeFromNib) {
  const std::size_t line = journal_.call("loadNibNamed ", name);
  if (!nibs.contains(name)) return journal_.result(line, false);
  if (awakeFromNib) awakeFromNib();
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

void MemoryUserDefaults::setBool(bool value, std::string_view key) {
  journal_.call("setBool ", value ? "YES " : "NO ", key);
  values[std::string(key)] = value;
}

bool MemoryUserDefaults::boolForKey(std::string_view key) {
  const std::size_t line = journal_.call("boolForKey ", key);
  const auto found = values.find(key);
  return journal_.result(line, found != values.end() && found->second);
}

std::unique_ptr<IMKServer> MemoryInputMethodKit::initWithName(std::string_view name,
                                                              std::string_view bundleIdentifier) {
  journal_.call("IMKServer initWithName ", name, " ", bundleIdentifier);
  if (serverFails) return nullptr;
  return std::make_unique<IMKServer>(IMKServer{std::string(name), std::string(bundleIdentifier)});
}

std::unique_ptr<IMKCandidates> MemoryInputMethodKit::initWithServer(
    IMKServer* server, IMKCandidatePanelType panelType) {
  journal_.call("IMKCandidates initWithServer ", server ? "server " : "null ",
                static_cast<int>(panelType));
  if (candidatesFail) return nullptr;
  return std::make_unique<IMKCandidates>(IMKCandidates{panelType});
}

}  // namespace quorvane::memory
