#include "tools/checker/TextRecord.h"

#include <algorithm>

namespace quorvane::checker {

namespace {

constexpr std::size_t kLengthOffset = 4;
constexpr std::size_t kTextOffset = 8;
constexpr std::size_t kKeyOffset = 392;

std::size_t number(std::span<const std::uint8_t> bytes, std::size_t offset) {
  std::size_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value << 8 | bytes[offset + i];
  return value;
}

void putNumber(std::span<std::uint8_t> bytes, std::size_t offset, std::size_t value) {
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * (3 - i)));
  }
}

}  // namespace

std::optional<TextRecord> decodeTextRecord(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < kTextRecordSize) return std::nullopt;
  const std::size_t cursor = number(bytes, 0);
  const std::size_t length = number(bytes, kLengthOffset);
  if (cursor > length || length > kTextCapacity) return std::nullopt;
  const auto text = bytes.subspan(kTextOffset, cursor);
  return TextRecord{{text.begin(), text.end()}, length, bytes[kKeyOffset]};
}

bool encodeTextRecord(const TextRecord& record, std::span<std::uint8_t> bytes) {
  const std::size_t cursor = record.text.size();
  if (bytes.size() < kTextRecordSize || cursor > record.length || record.length > kTextCapacity) {
    return false;
  }
  putNumber(bytes, 0, cursor);
  putNumber(bytes, kLengthOffset, record.length);
  std::ranges::copy(record.text, bytes.begin() + kTextOffset);
  if (cursor < kTextCapacity) bytes[kTextOffset + cursor] = 0;
  return true;
}

}  // namespace quorvane::checker
