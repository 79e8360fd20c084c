#include "hosts/desktop/ConsentFile.h"

#include "hosts/desktop/KeyFile.h"

namespace quorvane::desktop {
namespace {

constexpr const char* kAutomation = "automation";
constexpr const char* kPermit = "permit";
constexpr const char* kDeny = "deny";

}  // namespace

std::optional<Consent> ConsentFile::of(const std::string& bundleIdentifier) const {
  const std::string word = KeyFile(file_, log_).text(kAutomation, bundleIdentifier);
  if (word == kPermit) return Consent::Permit;
  if (word == kDeny) return Consent::Deny;
  return {};
}

void ConsentFile::set(const std::string& bundleIdentifier, Consent consent) const {
  KeyFile file(file_, log_);
  file.setText(kAutomation, bundleIdentifier, consent == Consent::Permit ? kPermit : kDeny);
  file.save();
}

}  // namespace quorvane::desktop
