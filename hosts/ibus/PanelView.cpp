#include "hosts/ibus/PanelView.h"

#include "hosts/ibus/FrameworkText.h"

namespace quorvane::ibus {

void PanelView::update() {
  Shown now = look();
  if (now == shown_) return;
  if (now.annotation != shown_.annotation) engine_.showAnnotation(now.annotation);
  now.annotation.swap(shown_.annotation);
  const bool candidatesStay = now == shown_;
  now.annotation.swap(shown_.annotation);
  if (!candidatesStay) showCandidates(now);
  shown_ = std::move(now);
}

void PanelView::forget() { shown_ = {}; }

PanelView::Shown PanelView::look() const {
  Shown now;
  const field::CandidatesPanel* const panel = field_.inputMethodKit.panel();
  if (panel == nullptr || !panel->isVisible() || panel->candidates().empty()) return now;
  now.visible = true;
  now.column = panel->panelType() == IMKCandidatePanelType::SingleColumnScrolling;
  now.candidates.assign(panel->shown().begin(), panel->shown().end());
  now.highlighted = panel->highlighted().value_or(panel->firstShown()) - panel->firstShown();
  const field::AnnotationWindow& window = field_.annotationWindow;
  if (window.alpha() > 0) now.annotation = window.text();
  return now;
}

void PanelView::showCandidates(const Shown& now) {
  if (!now.visible) return engine_.showCandidates(nullptr);
  IBusLookupTable* const table = ibus_lookup_table_new(
      field::CandidatesPanel::kMostShown, static_cast<guint>(now.highlighted), TRUE, FALSE);
  ibus_lookup_table_set_orientation(
      table, now.column ? IBUS_ORIENTATION_VERTICAL : IBUS_ORIENTATION_HORIZONTAL);
  for (const std::u16string& candidate : now.candidates) {
    ibus_lookup_table_append_candidate(table, newText(candidate));
  }
  engine_.showCandidates(table);
}

void PanelView::pick(std::uint32_t index) {
  field::CandidatesPanel* const panel = field_.inputMethodKit.panel();
  if (panel != nullptr) panel->pick(panel->firstShown() + index);
}

void PanelView::move(bool forward) {
  field::CandidatesPanel* const panel = field_.inputMethodKit.panel();
  if (panel == nullptr) return;
  const bool column = panel->panelType() == IMKCandidatePanelType::SingleColumnScrolling;
  if (column) return forward ? panel->moveDown(nullptr) : panel->moveUp(nullptr);
  forward ? panel->moveRight(nullptr) : panel->moveLeft(nullptr);
}

void PanelView::turnPage(bool forward) {
  for (std::size_t i = 0; i < field::CandidatesPanel::kMostShown; ++i) move(forward);
}

}  // namespace quorvane::ibus
