#pragma once

#include "platform/InputMethodKit.h"

namespace quorvane::desktop {

class InputMethodKit final : public quorvane::InputMethodKit {
 public:
  std::unique_ptr<IMKServer> initWithName(std::string_view name,
                                          std::string_view bundleIdentifier) override;
  std::unique_ptr<IMKCandidates> initWithServer(IMKServer* server,
                                                IMKCandidatePanelType panelType) override;
};

}  // namespace quorvane::desktop
