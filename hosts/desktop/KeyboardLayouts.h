#pragma once
// The keyboard layout that the person has chosen, as an input source. Which one it is is read anew
// at each question; its bytes are made once.

#include <optional>

#include "hosts/xkb/XkbLayout.h"
#include "platform/LogSink.h"
#include "platform/TextInputSources.h"

namespace quorvane::desktop {

class KeyboardLayouts {
 public:
  explicit KeyboardLayouts(quorvane::LogSink& log) : log_(log) {}

  /// A layout that there is no keymap for is told to the log, and `us` is taken. Never null.
  TISInputSourceRef current();
  /// `us` in place of a layout that can't type ASCII. Never null.
  TISInputSourceRef asciiCapable();

 private:
  void read();
  TISInputSourceRef us();

  quorvane::LogSink& log_;
  std::optional<xkb::RuleNames> names_;  ///< those that `current_` comes of
  TISInputSourceRef current_;
  TISInputSourceRef us_;
  bool typesAscii_ = false;
};

}  // namespace quorvane::desktop
