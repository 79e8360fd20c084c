#include "hosts/memory/MemoryInputMethodKit.h"

namespace quorvane::memory {

using field::CandidatesPanel;

std::unique_ptr<IMKServer> MemoryInputMethodKit::initWithName(std::string_view name,
                                                              std::string_view bundleIdentifier) {
  journal_.call("IMKServer initWithName ", name, " ", bundleIdentifier);
  return serverFails ? nullptr : field::InputMethodKit::initWithName(name, bundleIdentifier);
}

std::unique_ptr<IMKCandidates> MemoryInputMethodKit::initWithServer(
    IMKServer* server, IMKCandidatePanelType panelType) {
  journal_.call("IMKCandidates initWithServer ", server ? "server " : "null ",
                static_cast<int>(panelType));
  if (candidatesFail) return nullptr;
  return std::make_unique<MemoryCandidates>(journal_, surroundings_, panelType);
}

void MemoryInputMethodKit::cancelComposition(IMKInputController& controller) {
  journal_.call("cancelComposition");
  field::InputMethodKit::cancelComposition(controller);
}

MarkedTextAttributes MemoryInputMethodKit::markForStyle(IMKInputController& controller,
                                                        std::uint32_t style, NSRange range) {
  journal_.call("markForStyle ", style, " {", range.location, ",", range.length, "}");
  return field::InputMethodKit::markForStyle(controller, style, range);
}

IMKCandidatePanelType MemoryCandidates::panelType() const {
  journal_.count();
  return CandidatesPanel::panelType();
}

void MemoryCandidates::updateCandidates() {
  journal_.call("IMKCandidates updateCandidates");
  CandidatesPanel::updateCandidates();
}

void MemoryCandidates::setCandidateData(const std::vector<std::u16string>& candidates) {
  journal_.call("IMKCandidates setCandidateData ", candidates.size());
  CandidatesPanel::setCandidateData(candidates);
}

void MemoryCandidates::show(std::uint32_t locationHint) {
  journal_.call("IMKCandidates show ", locationHint);
  CandidatesPanel::show(locationHint);
}

void MemoryCandidates::hide() {
  journal_.call("IMKCandidates hide");
  CandidatesPanel::hide();
}

bool MemoryCandidates::isVisible() const {
  journal_.count();
  return CandidatesPanel::isVisible();
}

void MemoryCandidates::clearSelection() {
  journal_.call("IMKCandidates clearSelection");
  CandidatesPanel::clearSelection();
}

void MemoryCandidates::moveDown(IMKInputController* sender) {
  journal_.call("IMKCandidates moveDown");
  CandidatesPanel::moveDown(sender);
}

void MemoryCandidates::moveUp(IMKInputController* sender) {
  journal_.call("IMKCandidates moveUp");
  CandidatesPanel::moveUp(sender);
}

void MemoryCandidates::moveLeft(IMKInputController* sender) {
  journal_.call("IMKCandidates moveLeft");
  CandidatesPanel::moveLeft(sender);
}

void MemoryCandidates::moveRight(IMKInputController* sender) {
  journal_.call("IMKCandidates moveRight");
  CandidatesPanel::moveRight(sender);
}

NSRect MemoryCandidates::candidateFrame() const {
  journal_.call("IMKCandidates candidateFrame");
  return CandidatesPanel::candidateFrame();
}

}  // namespace quorvane::memory
