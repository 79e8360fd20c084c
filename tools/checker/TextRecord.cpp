#include "tools/checker/TextRecord.h"

#include <algorithm>

#include "src/base/BigEndian.h"

namespace quorvane::checker {

namespace {

constexpr std::size_t kLengthOffset = 4;
constexpr std::size_t kTextOffset = 8;
constexpr std::size_t kKeyOffset = 392;

}  // namespace

std::optional<TextRecord> decodeTextRecord(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < kTextRecordSize) return std::nullopt;
  const std::size_t cursor = bigEndianNumber<std::uint32_t>(bytes, 0);
  const std::size_t length = bigEndianNumber<std::uint32_t>(bytes, kLengthOffset);
  if (cursor > length || length > kTextCapacity) return std::nullopt;
  const auto text = bytes.subspan(kTextOffset, cursor);
  return TextRecord{{text.begin(), text.end()}, length, bytes[kKeyOffset]};
}

bool encodeTextRecord(const TextRecord& record, std::span<std::uint8_t> bytes) {
  const std::size_t cursor = record.text.size();
  if (bytes.size() < kTextRecordSize || cursor > record.length || record.length > kTextCapacity) {
    return false;
  }
  putBigEndian(bytes, 0, static_cast<std::uint32_t>(cursor));
  putBigEndian(bytes, kLengthOffset, static_cast<std::uint32_t>(record.length));
  std::ranges::copy(record.text, bytes.begin() + kTextOffset);
  if (cursor < kTextCapacity) bytes[kTextOffset + cursor] = 0;
  return true;
}

}  // namespace quorvane::checker
