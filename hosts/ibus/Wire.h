#pragma once
// What an input method may do to the client that has the focus.

#include <cstdint>
#include <string_view>

#include "hosts/ibus/Keys.h"

namespace quorvane::ibus {

class Wire {
 public:
  virtual ~Wire() = default;

  /// At the caret; takes the place of a selection.
  virtual void commit(std::u16string_view text) = 0;
  virtual void deleteBefore(std::uint32_t codePoints) = 0;
  /// Text that isn't the client's yet. Empty: none.
  virtual void showPreedit(std::u16string_view text, std::uint32_t caret) = 0;
  /// As if it were pressed on the keyboard.
  virtual void forward(const Key& key) = 0;
  /// Whether the client does with a key that comes like what is done to it, behind that, what it
  /// does with one from the keyboard.
  [[nodiscard]] virtual bool takesKeys() const { return true; }
  /// Such a key, pressed and released.
  virtual void passOn(const Key& key) = 0;
  /// Whether `key`, which a client tells of, was pressed by that. It is the client's.
  virtual bool comesBack(const Key& /*key*/) { return false; }
};

}  // namespace quorvane::ibus
