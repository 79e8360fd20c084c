#pragma once
// The first eight bytes of a text as a number, which settles most comparisons of texts.

#include <cstdint>
#include <string_view>

namespace quorvane {

/// What is missing counts as `fill`. Where two heads differ, they stand in the order of the texts.
inline std::uint64_t headOf(std::string_view text, unsigned char fill = 0) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < sizeof(head); ++i) {
    head = (head << 8) | (i < text.size() ? static_cast<unsigned char>(text[i]) : fill);
  }
  return head;
}

}  // namespace quorvane
