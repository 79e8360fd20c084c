#include "hosts/desktop/AppleEvents.h"

#include <algorithm>
#include <csignal>

#include "src/base/HostWords.h"

namespace quorvane::desktop {
namespace {

constexpr OSStatus kEventNotHandled = -1708;

/// Both words in host order, as they lie in memory.
std::optional<ProcessSerialNumber> serialNumberIn(std::span<const std::uint8_t> data) {
  if (data.size() != sizeof(std::uint32_t) * 2) return {};
  return ProcessSerialNumber{hostWord32(data, 0), hostWord32(data, sizeof(std::uint32_t))};
}

bool isTarget(const AnnouncedProcess& process, const AEAddressDesc& target) {
  if (target.descriptorType == typeProcessSerialNumber) {
    return serialNumberIn(target.data) == serialNumberOf(process.pid);
  }
  return target.descriptorType == typeApplicationBundleID && !target.data.empty() &&
         std::ranges::equal(target.data, process.announcement.bundleIdentifier,
                            [](std::uint8_t a, char b) { return static_cast<char>(a) == b; });
}

OSStatus statusOf(std::optional<Consent> consent) {
  if (!consent) return errAEEventWouldRequireUserConsent;
  return *consent == Consent::Permit ? noErr : errAEEventNotPermitted;
}

}  // namespace

OSStatus AppleEvents::AEDeterminePermissionToAutomateTarget(const AEAddressDesc& target,
                                                            FourCharCode /*eventClass*/,
                                                            FourCharCode /*eventID*/,
                                                            bool askUserIfNeeded) {
  const AnnouncedProcess* const found = find(target);
  if (found == nullptr) return procNotFound;
  const AnnouncedProcess process = *found;  // the list may change while somebody is asked
  if (process.announcement.bundleIdentifier.empty()) return errAEEventNotPermitted;
  auto consent = consent_.of(process.announcement.bundleIdentifier);
  if (!consent && askUserIfNeeded) consent = ask(process);
  return statusOf(consent);
}

OSStatus AppleEvents::AESendMessage(FourCharCode eventClass, FourCharCode eventID,
                                    const AEAddressDesc& target, std::int32_t /*mode*/,
                                    std::int32_t /*timeout*/) {
  if (eventClass != kCoreEventClass || eventID != kAEQuitApplication) return kEventNotHandled;
  const AnnouncedProcess* const process = find(target);
  if (process == nullptr || !registry_.signal(process->pid, SIGTERM)) return procNotFound;
  return noErr;
}

OSStatus AppleEvents::AESendGetData(FourCharCode /*property*/, const AEAddressDesc& target,
                                    std::int32_t /*mode*/, std::int32_t /*timeout*/,
                                    std::vector<std::uint8_t>& /*reply*/) {
  return find(target) == nullptr ? procNotFound : kEventNotHandled;
}

const AnnouncedProcess* AppleEvents::find(const AEAddressDesc& target) const {
  const auto processes = registry_.processes();
  const auto found = std::ranges::find_if(
      processes, [&target](const auto& process) { return isTarget(process, target); });
  return found == processes.end() ? nullptr : &*found;
}

std::optional<Consent> AppleEvents::ask(const AnnouncedProcess& target) {
  const NSAlert alert{.messageText = "Quorvane wants to control " + target.announcement.name,
                      .informativeText = "It can only work with it if you permit that.",
                      .buttons = {"Permit", "Deny", "Cancel"}};
  const int answer = alerts_.runModal(alert) - NSAlertFirstButtonReturn;
  if (answer != 0 && answer != 1) return {};
  const Consent consent = answer == 0 ? Consent::Permit : Consent::Deny;
  consent_.set(target.announcement.bundleIdentifier, consent);
  return consent;
}

}  // namespace quorvane::desktop
