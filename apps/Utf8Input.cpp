#include "apps/Utf8Input.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <limits>
#include <system_error>

namespace quorvane {
namespace {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"  // inside the macro
/// The code point at `next`, which moves behind it; negative where the bytes are malformed.
std::int32_t takeCodePoint(const char* bytes, std::int32_t& next, std::int32_t length) {
  UChar32 character = 0;
  U8_NEXT(bytes, next, length, character);
  return character;
}
#pragma GCC diagnostic pop

/// `malformed` says what bytes become that are no UTF-8, from an offset on.
template <class Malformed>
std::u32string decode(std::string_view bytes, const Malformed& malformed) {
  if (bytes.size() > std::numeric_limits<std::int32_t>::max()) {
    throw BadInput("the input is longer than 2 GiB");
  }
  std::u32string result;
  const auto length = static_cast<std::int32_t>(bytes.size());
  for (std::int32_t next = 0; next < length;) {
    const std::int32_t start = next;
    const std::int32_t character = takeCodePoint(bytes.data(), next, length);
    result.push_back(character < 0 ? malformed(start) : static_cast<char32_t>(character));
  }
  return result;
}

[[noreturn]] void throwErrno(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

std::string readAll(int descriptor) {
  std::string bytes;
  std::array<char, 16384> part;
  for (;;) {
    const ssize_t count = ::read(descriptor, part.data(), part.size());
    if (count == 0) return bytes;
    if (count > 0) bytes.append(part.data(), static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) throwErrno("can't read standard input");
  }
}

std::u32string decodeUtf8(std::string_view bytes) {
  return decode(bytes, [](std::int32_t start) -> char32_t {
    throw BadInput("the input is no UTF-8 at byte offset " + std::to_string(start));
  });
}

std::u32string decodeUtf8Leniently(std::string_view bytes) {
  return decode(bytes, [](std::int32_t /*start*/) { return U'\uFFFD'; });
}

std::u16string toUtf16(std::u32string_view text) {
  std::u16string result;
  for (const char32_t character : text) {
    if (character > 0xFFFF) result.push_back(static_cast<char16_t>(U16_LEAD(character)));
    result.push_back(static_cast<char16_t>(character > 0xFFFF ? U16_TRAIL(character) : character));
  }
  return result;
}

void writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) throwErrno("can't write to standard output");
  }
}

}  // namespace quorvane
