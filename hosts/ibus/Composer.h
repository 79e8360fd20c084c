#pragma once
// What the client will make of dead keys and compose sequences, by the compose table of the locale:
// it makes it itself, and tells nobody.

#include <cstdint>
#include <optional>
#include <string>

#include "hosts/xkb/Handles.h"

namespace quorvane::ibus {

class Composer {
 public:
  /// Without a compose table nothing composes.
  Composer();

  /// A key that was pressed: what it types, nothing while a sequence is incomplete; none: it is no
  /// part of a sequence.
  std::optional<std::u16string> feed(std::uint32_t keyval);
  void reset();

 private:
  xkb::Context context_;
  xkb::ComposeTable table_;
  xkb::ComposeState state_;
};

}  // namespace quorvane::ibus
