#pragma once
// A keyboard with a layout: which key makes which character, and back. The layout is asked for at
// each question, so that a switch takes effect at once.

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "hosts/keyboard/LayoutWriter.h"

namespace quorvane::keyboard {

struct Key {
  std::uint16_t keyCode = 0;
  bool shift = false;
  bool option = false;
  bool function = false;
};

class Keyboard {
 public:
  /// `layout` may give null: then only the special keys are there.
  explicit Keyboard(std::function<LayoutData()> layout) : layout_(std::move(layout)) {}

  /// The key for a typed character or one of the classic codes of `NSEvent::characters`, with as
  /// few modifiers as there may be. Empty where the layout has no such key.
  std::optional<Key> keyForCharacter(char32_t character);
  /// The characters of a key under NSEvent modifier flags; a dead key types what it would leave
  /// behind. Empty for modifier and unknown keys.
  std::u16string charactersForKey(std::uint16_t keyCode, std::uint32_t modifierFlags);

 private:
  void readLayout();

  std::function<LayoutData()> layout_;
  LayoutData read_;  ///< that `keys_` was read from
  std::map<char32_t, Key> keys_;
};

}  // namespace quorvane::keyboard
