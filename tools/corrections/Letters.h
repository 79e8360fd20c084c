#pragma once
// The letters of ASCII, whatever the locale: as characters and as bytes of a session text.

#include <algorithm>
#include <concepts>
#include <string>
#include <string_view>

namespace quorvane {

template <class Byte>
concept ByteSized = std::integral<Byte> && sizeof(Byte) == 1;

constexpr bool isUpper(ByteSized auto byte) { return byte >= 'A' && byte <= 'Z'; }
constexpr bool isLetter(ByteSized auto byte) {
  return isUpper(byte) || (byte >= 'a' && byte <= 'z');
}
constexpr bool isOneOf(std::string_view set, ByteSized auto byte) {
  return set.find(static_cast<char>(byte)) != std::string_view::npos;
}
constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr char lower(char c) { return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }

inline std::string lowered(std::string word) {
  std::ranges::transform(word, word.begin(), lower);
  return word;
}
inline std::string capitalised(std::string word) {
  if (!word.empty()) word.front() = upper(word.front());
  return word;
}

}  // namespace quorvane
