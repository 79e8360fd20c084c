#include "src/base/Checksum.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace quorvane {
namespace {

constexpr std::uint64_t kOddFactor = 0x9E3779B97F4A7C15;
constexpr std::size_t kLanes = 4;  // independent of one another, so that they run side by side

/// One-to-one in either argument.
std::uint64_t mix(std::uint64_t sum, std::uint64_t word) {
  return std::rotl((sum ^ word) * kOddFactor, 29);
}

std::uint64_t wordAt(const std::uint8_t* bytes, std::size_t size = sizeof(std::uint64_t)) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, size);
  return word;
}

}  // namespace

std::uint64_t checksum(std::span<const std::uint8_t> bytes) {
  constexpr std::size_t kWord = sizeof(std::uint64_t);
  std::array<std::uint64_t, kLanes> lanes{bytes.size(), 1, 2, 3};
  const std::uint8_t* at = bytes.data();
  std::size_t left = bytes.size();
  for (; left >= kLanes * kWord; left -= kLanes * kWord, at += kLanes * kWord) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      lanes[lane] = mix(lanes[lane], wordAt(at + lane * kWord));
    }
  }
  for (std::size_t size = 0; left > 0; left -= size, at += size) {
    size = std::min(left, kWord);
    lanes[0] = mix(lanes[0], wordAt(at, size));
  }
  std::uint64_t sum = 0;
  for (const std::uint64_t lane : lanes) sum = mix(sum, lane);
  return sum;
}

}  // namespace quorvane
