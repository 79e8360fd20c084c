#pragma once
// The desktop's clipboard around the Copy and the Paste of a command. What was there before is put
// back where all of it was text; a copy that a person makes meanwhile stays. A client that stands
// still finds the text for its Paste for half a minute, while other keys go on.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "hosts/desktop/RunLoop.h"
#include "hosts/x11/Selection.h"

namespace quorvane::ibus {

class CommandClipboard {
 public:
  /// Presses the chord in the client; false: there is nobody to press it for.
  using Press = std::function<bool()>;

  /// Both outlive this.
  CommandClipboard(desktop::RunLoop& runLoop, x11::Selection& selection)
      : runLoop_(runLoop), selection_(selection) {}
  ~CommandClipboard() { selection_.copied = nullptr; }
  CommandClipboard(const CommandClipboard&) = delete;
  CommandClipboard& operator=(const CommandClipboard&) = delete;

  // Neither waits, and neither begins before the one before has called `then`, nor while it awaits
  // its paste.

  /// What the client has copied; none: nothing, or somebody else did.
  void copy(Press press, std::function<void(std::optional<std::string>)> then);
  /// `then`: once the client has had the usual time to paste `text`.
  void paste(std::string text, Press press, std::function<void()> then);
  /// The client hasn't pasted yet what it was to.
  [[nodiscard]] bool awaitsPaste() const { return timer_ != nullptr; }

 private:
  using Moment = x11::Selection::Moment;

  void awaitCopy();
  void readCopy();
  void endCopy(std::optional<std::string> text);
  void awaitPaste(Moment since);
  void endPaste();
  void goOn();
  void restore();

  desktop::RunLoop& runLoop_;
  x11::Selection& selection_;
  x11::Selection::Content former_;
  bool overtaken_ = false;  ///< somebody has copied since the client did
  std::function<void(std::optional<std::string>)> copied_;
  std::function<void()> pasted_;
  std::unique_ptr<Registration> timer_;
};

}  // namespace quorvane::ibus
