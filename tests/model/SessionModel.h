#pragma once
// What the input method must remember of one client's typing, worked out naively: the bytes of the
// sentence that is being typed, and the place of the cursor in them.

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/AppKitEvents.h"

namespace quorvane::model {

/// A text that the main application wrote in place of the copy.
struct WrittenText {
  std::uint32_t cursor = 0;
  std::uint32_t length = 0;
  std::string bytes;

  [[nodiscard]] bool possible() const { return cursor <= length && length <= 384; }
};

struct SessionModel {
  std::string bytes = std::string(385, '\0');  ///< what lies behind the text counts too
  std::uint32_t cursor = 0;
  std::uint32_t length = 0;

  [[nodiscard]] std::string text() const { return bytes.substr(0, length); }

  /// A key down with an event record behind it.
  void key(const NSEvent& event) {
    constexpr std::uint32_t kNotTyping =
        NSEventModifierFlagCommand | NSEventModifierFlagControl | NSEventModifierFlagFunction;
    const std::uint8_t code = leadByte(event.characters);
    if (event.modifierFlags == NSEventModifierFlagCommand && code == 'a') forget();
    if ((event.modifierFlags & kNotTyping) == 0) typed(code == 3 ? 13 : code);
  }

  void take(const WrittenText& written) {
    if (!written.possible()) return;
    cursor = written.cursor;
    length = written.length;
    bytes.replace(0, cursor, written.bytes, 0, cursor);
  }

 private:
  /// First byte of the UTF-8 form; half a pair alone has none.
  static std::uint8_t leadByte(const std::u16string& text) {
    if (text.empty()) return 0;
    const char16_t unit = text[0];
    if (unit < 0x80) return static_cast<std::uint8_t>(unit);
    if (unit < 0x800) return static_cast<std::uint8_t>(0xC0 | unit >> 6);
    if (unit < 0xD800 || unit > 0xDFFF) return static_cast<std::uint8_t>(0xE0 | unit >> 12);
    const bool pair = unit < 0xDC00 && text.size() > 1 && text[1] >= 0xDC00 && text[1] < 0xE000;
    return pair ? static_cast<std::uint8_t>(0xF0 | (0x40u + (unit & 0x3FFu)) >> 8) : 0;
  }

  void typed(std::uint8_t key) {
    if (key == 8 || key == 127) return erase();
    if (key == 30 || key == 31) return forget();
    if (key == 28) cursor -= cursor > 0 ? 1 : 0;
    if (key == 29) cursor += cursor < length ? 1 : 0;
    const bool silent = key == 0 || key == 11 || key == 12 || key == 27 || key == 28 || key == 29;
    if (!silent) insert(key);
  }

  void insert(std::uint8_t key) {
    makeRoom();
    if (cursor < length) moveTail(cursor + 1);
    bytes[cursor++] = static_cast<char>(key);
    bytes[++length] = '\0';
  }

  void erase() {
    if (cursor == 0 || length == 0) return;
    if (cursor < length) moveTail(cursor - 1);
    bytes[length] = '\0';
    --cursor;
    --length;
  }

  /// The tail goes with the byte behind it; what lies further behind stays.
  void moveTail(std::uint32_t to) {
    const std::string tail = bytes.substr(cursor, length - cursor + 1);
    bytes.replace(to, tail.size(), tail);
    bytes.resize(385);
  }

  void makeRoom() {
    if (length < 320) return;
    if (isBefore(1, " \r\t")) {
      if (length >= 368 || isBefore(2, ".?!\r")) forget();
    } else if (length >= 384) {
      if (length > cursor + 32) {
        length = cursor;
      } else {
        forget();
      }
    }
  }

  [[nodiscard]] bool isBefore(std::uint32_t distance, std::string_view set) const {
    return cursor >= distance && set.find(bytes[cursor - distance]) != std::string_view::npos;
  }

  void forget() { cursor = length = 0; }
};

}  // namespace quorvane::model
