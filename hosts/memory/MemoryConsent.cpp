#include "hosts/memory/MemoryConsent.h"

#include "src/base/HostWords.h"

namespace quorvane::memory {
namespace {

/// A bundle identifier, or a serial number.
std::string describe(const AEAddressDesc& target) {
  if (target.descriptorType == typeApplicationBundleID) {
    return {target.data.begin(), target.data.end()};
  }
  std::string text;
  for (std::size_t at = 0; at + 4 <= target.data.size(); at += 4) {
    if (at > 0) text += ' ';
    text += std::to_string(hostNumber<std::uint32_t>(target.data, at));
  }
  return text;
}

}  // namespace

int MemoryAlerts::runModal(const NSAlert& alert) {
  std::string buttons;
  for (const std::string& title : alert.buttons) buttons += " [" + title + "]";
  const std::size_t line = journal_.call("runModal ", alert.alertStyle, " ", alert.messageText,
                                         ": ", alert.informativeText, buttons);
  shown.push_back(alert);
  const int last = NSAlertFirstButtonReturn + static_cast<int>(alert.buttons.size()) - 1;
  return journal_.result(line, answer.value_or(last));
}

OSStatus MemoryAppleEvents::AEDeterminePermissionToAutomateTarget(const AEAddressDesc& target,
                                                                  FourCharCode eventClass,
                                                                  FourCharCode eventID,
                                                                  bool askUserIfNeeded) {
  const std::string identifier = describe(target);
  const std::size_t line = journal_.call("AEDeterminePermissionToAutomateTarget ", identifier, " ",
                                         Journal::Code{eventClass}, " ", Journal::Code{eventID},
                                         askUserIfNeeded ? " asking" : "");
  const auto known = consents.find(identifier);
  return journal_.result(line, known == consents.end() ? procNotFound : known->second);
}

OSStatus MemoryAppleEvents::AESendMessage(FourCharCode eventClass, FourCharCode eventID,
                                          const AEAddressDesc& target, std::int32_t mode,
                                          std::int32_t timeout) {
  const std::size_t line = journal_.call(
      "AESendMessage ", Journal::Code{eventClass}, " ", Journal::Code{eventID}, " ",
      Journal::Code{target.descriptorType}, " ", describe(target), " ", mode, " ", timeout);
  return journal_.result(line, sendResult);
}

OSStatus MemoryAppleEvents::AESendGetData(FourCharCode property, const AEAddressDesc& target,
                                          std::int32_t mode, std::int32_t timeout,
                                          std::vector<std::uint8_t>& out) {
  const std::size_t line = journal_.call("AESendGetData ", Journal::Code{property}, " ",
                                         Journal::Code{target.descriptorType}, " ",
                                         describe(target), " ", mode, " ", timeout);
  out = reply;
  return journal_.result(line, sendResult);
}

}  // namespace quorvane::memory
