#include "hosts/desktop/InputMethodKit.h"

namespace quorvane::desktop {

std::unique_ptr<IMKServer> InputMethodKit::initWithName(std::string_view name,
                                                        std::string_view bundleIdentifier) {
  if (name.empty()) return nullptr;
  return std::make_unique<IMKServer>(IMKServer{std::string(name), std::string(bundleIdentifier)});
}

std::unique_ptr<IMKCandidates> InputMethodKit::initWithServer(IMKServer* /*server*/,
                                                              IMKCandidatePanelType panelType) {
  return std::make_unique<IMKCandidates>(IMKCandidates{panelType});
}

}  // namespace quorvane::desktop
