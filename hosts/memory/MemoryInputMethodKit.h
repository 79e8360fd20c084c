#pragma once
// The InputMethodKit of the text fields, with every call of the logic on it and on its candidates
// panel in the journal.

#include "hosts/field/InputMethodKit.h"
#include "hosts/memory/MemoryJournal.h"

namespace quorvane::memory {

class MemoryInputMethodKit : public field::InputMethodKit {
 public:
  explicit MemoryInputMethodKit(MemoryJournal& journal) : journal_(journal) {}

  std::unique_ptr<IMKServer> initWithName(std::string_view name,
                                          std::string_view bundleIdentifier) override;
  std::unique_ptr<IMKCandidates> initWithServer(IMKServer* server,
                                                IMKCandidatePanelType panelType) override;
  void cancelComposition(IMKInputController& controller) override;
  MarkedTextAttributes markForStyle(IMKInputController& controller, std::uint32_t style,
                                    NSRange range) override;

  bool serverFails = false;
  bool candidatesFail = false;

 private:
  MemoryJournal& journal_;
};

class MemoryCandidates final : public field::CandidatesPanel {
 public:
  MemoryCandidates(MemoryJournal& journal, field::PanelSurroundings& surroundings,
                   IMKCandidatePanelType panelType)
      : CandidatesPanel(surroundings, panelType), journal_(journal) {}

  [[nodiscard]] IMKCandidatePanelType panelType() const override;
  void updateCandidates() override;
  void setCandidateData(const std::vector<std::u16string>& candidates) override;
  void show(std::uint32_t locationHint) override;
  void hide() override;
  [[nodiscard]] bool isVisible() const override;
  void clearSelection() override;
  void moveDown(IMKInputController* sender) override;
  void moveUp(IMKInputController* sender) override;
  void moveLeft(IMKInputController* sender) override;
  void moveRight(IMKInputController* sender) override;
  [[nodiscard]] NSRect candidateFrame() const override;

 private:
  MemoryJournal& journal_;
};

}  // namespace quorvane::memory
