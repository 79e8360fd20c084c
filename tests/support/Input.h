#pragma once
// A fuzzer's bytes, read from front to back as choices. At the end everything reads as 0, so that
// each prefix of an input is an input too.

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace quorvane::fuzz {

using Bytes = std::span<const std::uint8_t>;

class Input {
 public:
  explicit Input(Bytes bytes) : rest_(bytes) {}

  [[nodiscard]] bool empty() const { return rest_.empty(); }
  std::uint8_t byte() {
    const Bytes taken = take(1);
    return taken.empty() ? std::uint8_t{0} : taken.front();
  }
  std::uint16_t half() {
    const std::uint16_t high = byte();
    return static_cast<std::uint16_t>(high << 8 | byte());
  }
  std::uint32_t word() {
    const std::uint32_t high = half();
    return high << 16 | half();
  }
  bool flag() { return (byte() & 1) != 0; }
  /// One byte, cut to 0 to `limit` - 1. `limit` is at most 256.
  std::size_t below(std::size_t limit) { return byte() % limit; }
  template <class Item, std::size_t size>
  const Item& oneOf(const std::array<Item, size>& items) {
    return items[below(size)];
  }
  /// A number that decoders stumble over, a small one, or any.
  std::uint32_t number() {
    constexpr std::array<std::uint32_t, 16> kEdges{
        0,   1,   2,   3,   319,     320,     367,        368,
        383, 384, 385, 392, 0x10000, 0x20002, 0x7FFFFFFF, 0xFFFFFFFF};
    const std::uint8_t choice = byte();
    if (choice < kEdges.size()) return kEdges[choice];
    return choice < 0xC0 ? choice - 16U : word();
  }
  /// As many as there are.
  Bytes take(std::size_t count) {
    const Bytes taken = rest_.first(std::min(count, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }
  /// A length of one byte, then so many bytes.
  Bytes counted() { return take(byte()); }

 private:
  Bytes rest_;
};

inline std::vector<std::uint8_t> copyOf(Bytes bytes) { return {bytes.begin(), bytes.end()}; }
inline std::string_view textOf(Bytes bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace quorvane::fuzz
