#pragma once
// The InputMethodKit of the text fields, where a test may have its parts fail.

#include "hosts/field/InputMethodKit.h"

namespace quorvane::memory {

class MemoryInputMethodKit : public field::InputMethodKit {
 public:
  using field::InputMethodKit::InputMethodKit;

  std::unique_ptr<IMKServer> initWithName(std::string_view name,
                                          std::string_view bundleIdentifier) override {
    auto server = field::InputMethodKit::initWithName(name, bundleIdentifier);
    return serverFails ? nullptr : std::move(server);
  }
  std::unique_ptr<IMKCandidates> initWithServer(IMKServer* server,
                                                IMKCandidatePanelType panelType) override {
    auto candidates = field::InputMethodKit::initWithServer(server, panelType);
    return candidatesFail ? nullptr : std::move(candidates);
  }

  bool serverFails = false;
  bool candidatesFail = false;
};

}  // namespace quorvane::memory
