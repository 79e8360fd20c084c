#include <algorithm>
#include <cstring>

#include "src/bridge/BIM_str.h"

namespace quorvane {

std::uint8_t* Pstrcpy(std::uint8_t* dst, const std::uint8_t* src) {
  std::memmove(dst, src, std::size_t{src[0]} + 1);
  return dst;
}

std::uint8_t* Pstrcat(std::uint8_t* dst, const std::uint8_t* src) {
  const std::uint8_t added = src[0];
  std::memmove(dst + 1 + dst[0], src + 1, added);
  dst[0] = static_cast<std::uint8_t>(dst[0] + added);
  return dst;
}

std::int32_t Pstrcmp(const std::uint8_t* a, const std::uint8_t* b) {
  if (b[0] == 0 || a[0] != b[0]) return 0;
  return std::memcmp(a + 1, b + 1, b[0]) == 0 ? -1 : 0;
}

std::uint8_t* PtoCstrCpy(std::uint8_t* dst, const std::uint8_t* src) {
  const std::uint8_t length = src[0];
  std::memmove(dst, src + 1, length);
  dst[length] = 0;
  return dst;
}

std::uint8_t* PtoCstr(std::uint8_t* s) {
  // The length byte is read as a signed value.
  const std::size_t length = s[0] < 128 ? s[0] : 0;
  std::memmove(s, s + 1, length);
  s[length] = 0;
  return s;
}

std::uint8_t* CtoPstr(std::uint8_t* s) {
  const auto length = static_cast<std::uint8_t>(std::min(strnglen(s), std::uint32_t{255}));
  std::memmove(s + 1, s, length);
  s[0] = length;
  return s;
}

void CtoPstrCpy(std::uint8_t* dst, const std::uint8_t* src) {
  const bool empty = src[0] == 0;
  if (!empty) dst[1] = 0;
  dst[0] = empty ? 0 : 1;
}

}  // namespace quorvane
