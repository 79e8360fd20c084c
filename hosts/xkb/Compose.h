#pragma once
// What dead keys make of the keys behind them, by the compose table of en_US.UTF-8.

#include <map>

#include "hosts/keyboard/LayoutWriter.h"
#include "hosts/xkb/Handles.h"

namespace quorvane::xkb {

/// A key symbol for each text that a layout types.
using Symbols = std::map<std::u16string, xkb_keysym_t>;

bool isDeadKey(xkb_keysym_t symbol);

class Compose {
 public:
  /// Without a compose table nothing composes.
  explicit Compose(xkb_context* context);

  /// What the dead key leaves where nothing composes is what it makes of itself, of a space, or
  /// failing these the character that it is named after.
  keyboard::DeadKey deadKey(xkb_keysym_t symbol, const Symbols& symbols);

 private:
  std::u16string composed(xkb_keysym_t deadKey, xkb_keysym_t symbol);
  std::u16string terminator(xkb_keysym_t deadKey);

  ComposeTable table_;
  ComposeState state_;
};

}  // namespace quorvane::xkb
