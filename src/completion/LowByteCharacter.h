#pragma once
// What decides what a key is: not the character but its low 8 bits, as a signed number. So U+0161
// counts as the letter a. No wider test is wanted.

#include <cstdint>
#include <string>

namespace quorvane {

class LowByteCharacter {
 public:
  /// Of the UTF-16 unit at `index`; beyond the text std::out_of_range is thrown.
  LowByteCharacter(const std::u16string& text, std::size_t index)
      : value_(static_cast<std::int8_t>(text.at(index))) {}

  [[nodiscard]] std::int8_t value() const { return value_; }
  [[nodiscard]] bool isLetter() const {
    return (value_ >= 'a' && value_ <= 'z') || (value_ >= 'A' && value_ <= 'Z');
  }
  /// For the character sets. With the sign: from 0x80 on the high byte is 0xFF.
  [[nodiscard]] char16_t widened() const { return static_cast<char16_t>(value_); }

 private:
  std::int8_t value_;
};

}  // namespace quorvane
