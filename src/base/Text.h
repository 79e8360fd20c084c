#pragma once
// UTF-16 text and its UTF-8 form, for the places that may not allocate. Everything else about
// encodings is the platform's.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quorvane {

/// Takes the first character off `rest` and writes its UTF-8 form; returns the number of bytes, 1
/// to 4. An unpaired surrogate becomes U+FFFD. `rest` must not be empty.
std::size_t takeUtf8(std::u16string_view& rest, std::array<char, 4>& utf8);

/// The first byte of the UTF-8 form, 0 for no text. An unpaired surrogate has no UTF-8 form: 0.
std::uint8_t firstUtf8Byte(std::u16string_view text);

/// False where the text holds an unpaired surrogate.
bool hasUtf8Form(std::u16string_view text);

/// The UTF-8 form of the whole text.
std::string toUtf8(std::u16string_view text);

}  // namespace quorvane
