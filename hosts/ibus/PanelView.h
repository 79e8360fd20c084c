#pragma once
// What the input method shows beside a text, in the framework's panel: candidates as its lookup
// table, the annotation as its auxiliary text.

#include <string>
#include <vector>

#include "hosts/field/FieldParts.h"
#include "hosts/ibus/Engine.h"

namespace quorvane::ibus {

class PanelView {
 public:
  /// Both outlive this.
  PanelView(field::FieldParts& field, Engine& engine) : field_(field), engine_(engine) {}

  /// Shows what has changed since.
  void update();
  /// The panel has been cleared.
  void forget();

  // What a person does in the panel.
  void pick(std::uint32_t index);
  void move(bool forward);
  void turnPage(bool forward);

 private:
  struct Shown {
    bool visible = false;
    bool column = false;
    std::vector<std::u16string> candidates;
    std::size_t highlighted = 0;
    std::u16string annotation;
    bool operator==(const Shown&) const = default;
  };

  [[nodiscard]] Shown look() const;
  void showCandidates(const Shown& now);

  field::FieldParts& field_;
  Engine& engine_;
  Shown shown_;
};

}  // namespace quorvane::ibus
