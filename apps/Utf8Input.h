#pragma once
// Text from outside as code points, and its way out.

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quorvane {

/// Input that isn't text.
class BadInput : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// All of a file descriptor. Throws std::system_error where it can't be read.
std::string readAll(int descriptor);

/// Throws BadInput with the offset of the first byte that is no UTF-8.
std::u32string decodeUtf8(std::string_view bytes);
/// Malformed bytes become U+FFFD.
std::u32string decodeUtf8Leniently(std::string_view bytes);

std::u16string toUtf16(std::u32string_view text);

/// All of it, or std::system_error.
void writeAll(int descriptor, std::string_view bytes);

}  // namespace quorvane
