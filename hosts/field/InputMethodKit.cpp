#include "hosts/field/InputMethodKit.h"

#include <utility>

namespace quorvane::field {
namespace {

bool panelTakesArrows(const NSOperatingSystemVersion& version) {
  return version.majorVersion < 10 || (version.majorVersion == 10 && version.minorVersion < 14);
}

}  // namespace

void InputMethodKit::connect(TextApplication& application,
                             std::function<std::span<const NSRect>()> screens,
                             std::function<NSOperatingSystemVersion()> systemVersion) {
  surroundings_.application = &application;
  surroundings_.screens = std::move(screens);
  application.boundary().takeDeclined = [this,
                                         version = std::move(systemVersion)](const NSEvent& event) {
    return panel() && panelTakesArrows(version()) && panel()->takeKey(event);
  };
}

std::unique_ptr<IMKServer> InputMethodKit::initWithName(std::string_view name,
                                                        std::string_view bundleIdentifier) {
  record(surroundings_.journal, "IMKServer initWithName ", name, " ", bundleIdentifier);
  if (name.empty()) return nullptr;
  return std::make_unique<IMKServer>(IMKServer{std::string(name), std::string(bundleIdentifier)});
}

std::unique_ptr<IMKCandidates> InputMethodKit::initWithServer(IMKServer* server,
                                                              IMKCandidatePanelType panelType) {
  record(surroundings_.journal, "IMKCandidates initWithServer ", server ? "server " : "null ",
         static_cast<int>(panelType));
  return std::make_unique<CandidatesPanel>(surroundings_, panelType);
}

void InputMethodKit::cancelComposition(IMKInputController& controller) {
  record(surroundings_.journal, "cancelComposition");
  TextApplication* const application = surroundings_.application;
  if (!application || application->controller() != &controller) return;
  const Document* const document = application->focused();
  if (!document || !document->markedRange()) return;
  application->focusedClient()->setMarkedText(u"", {}, {NSNotFound, NSNotFound});
}

MarkedTextAttributes InputMethodKit::markForStyle(IMKInputController& /*controller*/,
                                                  std::uint32_t style, NSRange range) {
  record(surroundings_.journal, "markForStyle ", style, " {", range.location, ",", range.length,
         "}");
  return {style, range};
}

void InputMethodKit::ownTextFollows() {
  if (surroundings_.application) surroundings_.application->boundary().ownTextFollows();
}

}  // namespace quorvane::field
