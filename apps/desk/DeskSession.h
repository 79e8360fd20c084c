#pragma once
// One run of `desk`: keys of the terminal go into the document of a running system, and what comes
// of them is drawn.

#include <deque>
#include <optional>

#include "apps/RunningSystem.h"
#include "apps/desk/DeskFacts.h"
#include "apps/desk/DeskKeys.h"
#include "apps/desk/DeskOptions.h"
#include "apps/desk/DeskPlan.h"
#include "apps/desk/DeskScreen.h"
#include "apps/desk/OpenMenu.h"
#include "apps/desk/Terminal.h"
#include "hosts/menu/MenuTracking.h"

namespace quorvane::desk {

class DeskSession {
 public:
  /// Throws what a running system throws, and std::runtime_error where the log can't be written.
  explicit DeskSession(const DeskOptions& options);
  DeskSession(const DeskSession&) = delete;
  DeskSession& operator=(const DeskSession&) = delete;

  /// Returns when the person at the desk quits or a signal asks for it, with the terminal as it
  /// was.
  void run();
  /// The signal that asked for the end; 0: none.
  [[nodiscard]] int signal() const { return system_.signal(); }

 private:
  void live();
  void readKeys(GIOCondition condition);
  bool turn();
  [[nodiscard]] bool ends() const { return over_ || signal() != 0; }
  void obey(const DeskKey& key);
  void openMenu();
  void obeyInMenu(const DeskKey& key);
  void pressInWindow(const DeskKey& key);
  void tapShift();
  void toggleAnnotation();
  void fit();
  void placeWindows();

  void aboutToCall(const field::ClientCall& call);
  void placeLine(std::u16string_view text, std::size_t index, std::size_t caret);
  void placeLine();

  void draw();
  [[nodiscard]] std::optional<PanelView> panel();
  [[nodiscard]] std::optional<AnnotationView> annotation();

  desktop::Descriptor log_;
  bool showAnnotation_;
  RunningSystem system_;
  DeskFacts facts_{system_};
  std::optional<MenuTracking> tracking_;  ///< while the Input Menu is open …
  std::optional<OpenMenu> menu_;          ///< … as this shows it
  std::optional<Terminal> terminal_;
  DeskPlan plan_{0, 0};
  std::deque<DeskKey> keys_;  ///< read, and not yet typed
  bool over_ = false;
};

}  // namespace quorvane::desk
