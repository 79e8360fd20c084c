#pragma once
// Reading formats out of bytes that may claim anything: each look is within bounds or ends the
// reading with a reason.

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "src/base/BigEndian.h"

namespace quorvane::resources {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

/// Neither a fork nor the file around it may be larger.
inline constexpr std::size_t kLargest = std::size_t{1} << 24;

/// What reading or writing a format gives: a value, or the reason why there is none.
template <class Value>
struct Outcome {
  std::optional<Value> value;
  std::string_view fault;
  explicit operator bool() const { return value.has_value(); }
};

/// Thrown inside a reader or a writer, never out of one.
struct FormatFault {
  std::string_view reason;
};

inline void require(bool holds, std::string_view reason) {
  if (!holds) throw FormatFault{reason};
}

template <class Work>
auto outcomeOf(const Work& work) -> Outcome<decltype(work())> {
  try {
    return {work(), {}};
  } catch (const FormatFault& fault) {
    return {std::nullopt, fault.reason};
  }
}

[[nodiscard]] inline ByteView checkedPart(ByteView bytes, std::size_t offset, std::size_t length,
                                          std::string_view reason) {
  require(offset <= bytes.size() && length <= bytes.size() - offset, reason);
  return bytes.subspan(offset, length);
}

template <class Number>
[[nodiscard]] Number checkedNumber(ByteView bytes, std::size_t offset, std::string_view reason) {
  return bigEndianNumber<Number>(checkedPart(bytes, offset, sizeof(Number), reason));
}

template <class Number>
void appendNumber(Bytes& out, Number number) {
  out.resize(out.size() + sizeof(Number));
  putBigEndian<Number>(out, out.size() - sizeof(Number), number);
}

inline void append(Bytes& out, ByteView bytes) {
  out.insert(out.end(), bytes.begin(), bytes.end());
}

/// A stretch of a file: first byte, and the one behind the last.
using Stretch = std::pair<std::size_t, std::size_t>;

inline void requireApart(std::vector<Stretch> all, std::string_view reason) {
  std::erase_if(all, [](const Stretch& each) { return each.first == each.second; });
  std::ranges::sort(all);
  const auto overlap = std::ranges::adjacent_find(
      all, [](const Stretch& a, const Stretch& b) { return b.first < a.second; });
  require(overlap == all.end(), reason);
}

}  // namespace quorvane::resources
