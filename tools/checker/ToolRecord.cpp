#include "tools/checker/ToolRecord.h"

#include <atomic>
#include <bit>

namespace quorvane::checker {

namespace {

std::uint32_t bigEndian(std::uint32_t value) {
  if constexpr (std::endian::native == std::endian::big) return value;
  return __builtin_bswap32(value);
}

}  // namespace

std::uint32_t* ToolRecord::word(At at) const {
  const std::size_t index = static_cast<std::size_t>(at) / sizeof(std::uint32_t);
  return index < words_.size() ? &words_[index] : nullptr;
}

std::uint32_t ToolRecord::get(At at) const {
  std::uint32_t* field = word(at);
  return field == nullptr ? 0 : bigEndian(std::atomic_ref(*field).load());
}

void ToolRecord::put(At at, std::uint32_t value) const {
  if (std::uint32_t* field = word(at)) std::atomic_ref(*field).store(bigEndian(value));
}

void ToolRecord::clearBits(At at, std::uint32_t mask) const {
  if (std::uint32_t* field = word(at)) std::atomic_ref(*field).fetch_and(bigEndian(~mask));
}

}  // namespace quorvane::checker
