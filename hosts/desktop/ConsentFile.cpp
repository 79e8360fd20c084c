#include "hosts/desktop/ConsentFile.h"

#include "hosts/desktop/KeyFile.h"

namespace quorvane::desktop {
namespace {

constexpr const char* kAutomation = "automation";
constexpr const char* kPermit = "permit";
constexpr const char* kDeny = "deny";

std::string keyOf(const std::string& bundleIdentifier) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string key;
  for (const char c : bundleIdentifier) {
    const auto byte = static_cast<unsigned char>(c);
    key.append({kDigits[byte / 16], kDigits[byte % 16]});
  }
  return key;
}

}  // namespace

std::optional<Consent> ConsentFile::of(const std::string& bundleIdentifier) const {
  const std::string word = KeyFile(file_, log_).text(kAutomation, keyOf(bundleIdentifier));
  if (word == kPermit) return Consent::Permit;
  if (word == kDeny) return Consent::Deny;
  return {};
}

void ConsentFile::set(const std::string& bundleIdentifier, Consent consent) const {
  KeyFile file(file_, log_);
  file.setText(kAutomation, keyOf(bundleIdentifier), consent == Consent::Permit ? kPermit : kDeny);
  file.save();
}

}  // namespace quorvane::desktop
