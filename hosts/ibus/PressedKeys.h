#pragma once
// The keys that the input method presses in the client that has the focus, one after the other:
// most are forwarded; where a client takes letters alone so, the keyboard is played, and the key
// comes by once more. Copy and Paste go along with the clipboard. What is
// pasted after a copy takes its place: only where that is still selected.

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/ibus/CommandClipboard.h"
#include "hosts/ibus/Wire.h"
#include "hosts/x11/Display.h"

namespace quorvane::ibus {

/// What the rest of the process does for them.
struct PressedKeysParts {
  std::function<std::string_view()> client;  ///< the one that has the focus, as it calls itself
  std::function<std::string_view()> field;   ///< what has the focus there; empty: nothing
  /// A client has copied for a command. False: it couldn't be kept.
  std::function<bool(const std::string& utf8)> copied;
  std::function<std::string()> toPaste;              ///< UTF-8; empty: nothing
  std::function<void(std::string_view why)> failed;  ///< a key of a command did nothing
};

class PressedKeys final : public Wire {
 public:
  /// `wire` and `runLoop` outlive this. Without a display of the X Window System there is no
  /// clipboard.
  PressedKeys(Wire& wire, desktop::RunLoop& runLoop, PressedKeysParts parts);
  ~PressedKeys() override = default;
  PressedKeys(const PressedKeys&) = delete;
  PressedKeys& operator=(const PressedKeys&) = delete;

  void commit(std::u16string_view text) override { wire_.commit(text); }
  void deleteBefore(std::uint32_t codePoints) override { wire_.deleteBefore(codePoints); }
  void showPreedit(std::u16string_view text, std::uint32_t caret) override {
    wire_.showPreedit(text, caret);
  }
  void forward(const Key& key) override;
  [[nodiscard]] bool takesKeys() const override;
  void passOn(const Key& key) override { wire_.passOn(key); }
  bool comesBack(const Key& key) override;

 private:
  using Moment = std::chrono::steady_clock::time_point;
  struct Pressed {
    Key key;
    std::string field;
  };
  struct Copied {
    Pressed chord;
    std::string text;
  };

  void next();
  void goOn();
  void perform(const Pressed& pressed);
  void copy(const Pressed& pressed);
  void paste(const Pressed& pressed);
  void replace(const Copied& copied, const Pressed& pressed, const std::string& text);
  void insert(const Pressed& pressed, const std::string& text);
  void fail(std::string_view why);
  bool press(const Pressed& pressed);
  void play(const Key& key);
  void playOne(std::uint32_t keycode, bool down);

  Wire& wire_;
  PressedKeysParts parts_;
  std::unique_ptr<x11::Display> display_;      ///< null: none
  std::unique_ptr<x11::Selection> selection_;  ///< null: none
  std::optional<CommandClipboard> clipboard_;
  std::deque<Pressed> waiting_;
  bool busy_ = false;
  std::optional<Copied> copied_;  ///< since the last paste
  std::deque<Key> played_;        ///< that haven't come by yet; the state says press or release
  Moment playedUntil_;
};

}  // namespace quorvane::ibus
