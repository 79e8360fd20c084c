#pragma once
// The candidates panel of an application with text fields: what it lists, where its highlight is
// and where it stands. Drawing it is the program's business.

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/field/TextApplication.h"
#include "hosts/journal/Journal.h"

namespace quorvane::field {

class CandidatesPanel;

/// What a panel stands in; outlives it.
struct PanelSurroundings {
  TextApplication* application = nullptr;  ///< null: nobody to serve
  std::function<std::span<const NSRect>()> screens;
  CandidatesPanel* panel = nullptr;  ///< the latest one made, while it lives
  Journal* journal = nullptr;        ///< of what the logic calls
};

/// Serves the controller of the application, for its focused document. Where that throws in a call
/// that the panel makes on somebody's behalf, the exception goes to that somebody.
class CandidatesPanel : public IMKCandidates {
 public:
  // The geometry: characters of a fixed width, at most nine candidates at a time, each with a digit
  // and a blank before it and a blank behind it. In points.
  static constexpr double kCharacterWidth = 8, kRowHeight = 16;
  static constexpr std::size_t kMostShown = 9, kPadding = 3;

  CandidatesPanel(PanelSurroundings& surroundings, IMKCandidatePanelType panelType);
  ~CandidatesPanel() override;
  CandidatesPanel(const CandidatesPanel&) = delete;
  CandidatesPanel& operator=(const CandidatesPanel&) = delete;

  [[nodiscard]] IMKCandidatePanelType panelType() const override;
  void updateCandidates() override;
  void setCandidateData(const std::vector<std::u16string>& candidates) override;
  /// Below the line of the focused document whatever the hint, above it where there is no room.
  void show(std::uint32_t locationHint) override;
  void hide() override;
  [[nodiscard]] bool isVisible() const override;
  void clearSelection() override;
  // A column steps by up and down, a row by left and right; the other two do nothing. Without a
  // highlight a step forward puts it on the first candidate.
  void moveDown(IMKInputController* sender) override;
  void moveUp(IMKInputController* sender) override;
  void moveLeft(IMKInputController* sender) override;
  void moveRight(IMKInputController* sender) override;
  /// Stays as it was last while the panel is hidden.
  [[nodiscard]] NSRect candidateFrame() const override;

  [[nodiscard]] const std::vector<std::u16string>& candidates() const { return candidates_; }
  [[nodiscard]] std::optional<std::size_t> highlighted() const { return highlighted_; }
  /// The candidates to be seen, `kMostShown` or fewer; `firstShown` is the place of the first.
  [[nodiscard]] std::span<const std::u16string> shown() const;
  [[nodiscard]] std::size_t firstShown() const { return firstShown_; }

  /// The user picks a candidate. What the controller throws is recorded by the application. Nothing
  /// happens in a hidden panel or where there is no such candidate.
  void pick(std::size_t index);
  /// Stands by the line again, which has moved or is another's.
  void place();
  /// A key that the controller declined, where the panel itself takes its arrow keys. False: it is
  /// none of them, or the panel is hidden.
  bool takeKey(const NSEvent& event);

 private:
  [[nodiscard]] bool isColumn() const {
    return panelType_ == IMKCandidatePanelType::SingleColumnScrolling;
  }
  void record(std::string_view call) const;
  void replace(std::vector<std::u16string> candidates);
  void begin();
  void stepForward();
  void stepBack();
  void highlight(std::size_t index);
  void tell();
  [[nodiscard]] NSRect sized() const;
  [[nodiscard]] NSRect screenOf(const NSRect& line) const;

  PanelSurroundings& surroundings_;
  IMKCandidatePanelType panelType_;
  std::vector<std::u16string> candidates_;
  std::optional<std::size_t> highlighted_;
  std::size_t firstShown_ = 0;
  bool visible_ = false;
  NSRect frame_;
};

}  // namespace quorvane::field
