#pragma once
// InputMethodKit as an application with text fields has it inside: the server, the candidates
// panel, and what the framework does for a controller.

#include "hosts/field/CandidatesPanel.h"
#include "platform/Application.h"

namespace quorvane::field {

class InputMethodKit : public quorvane::InputMethodKit {
 public:
  explicit InputMethodKit(Journal* journal = nullptr) { surroundings_.journal = journal; }

  /// Until then a panel has nobody to serve. Before 10.14 a panel takes the arrow keys of its form
  /// that the controller declined; from then on they go to the document.
  void connect(TextApplication& application, std::function<std::span<const NSRect>()> screens,
               std::function<NSOperatingSystemVersion()> systemVersion);

  std::unique_ptr<IMKServer> initWithName(std::string_view name,
                                          std::string_view bundleIdentifier) override;
  std::unique_ptr<IMKCandidates> initWithServer(IMKServer* server,
                                                IMKCandidatePanelType panelType) override;
  /// By the client's setMarkedText, with an empty text.
  void cancelComposition(IMKInputController& controller) override;
  MarkedTextAttributes markForStyle(IMKInputController& controller, std::uint32_t style,
                                    NSRange range) override;
  void ownTextFollows() override;

  /// The latest one made; null where there is none.
  [[nodiscard]] CandidatesPanel* panel() const { return surroundings_.panel; }

 private:
  PanelSurroundings surroundings_;
};

}  // namespace quorvane::field
