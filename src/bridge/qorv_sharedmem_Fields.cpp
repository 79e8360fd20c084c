#include <bit>

#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {
namespace {

// The other process reads and writes the words while we do: each access is one 32-bit access.
using SharedWord = volatile std::uint32_t;

// Host order from and to big-endian.
std::uint32_t swapped(std::uint32_t word) {
  if constexpr (std::endian::native == std::endian::big) return word;
  return __builtin_bswap32(word);
}

// Null without an attachment and for an index outside the record.
SharedWord* wordAt(Instance& instance, FieldGroup group, std::uint32_t i) {
  std::uint8_t* record = Get_OPENGlobalToolCRecPtr(instance);
  const std::size_t offset = static_cast<std::size_t>(group) + 4 * std::size_t{i};
  if (record == nullptr || offset + 4 > kToolCRecSize) return nullptr;
  return reinterpret_cast<SharedWord*>(record + offset);
}

std::uint32_t maskOf(std::uint32_t bit) { return bit < 32 ? std::uint32_t{1} << bit : 0; }

}  // namespace

std::uint32_t ToolRec::get(std::uint32_t i, FieldGroup group) const {
  const SharedWord* word = wordAt(instance(), group, i);
  return word == nullptr ? 0 : swapped(*word);
}

std::uint32_t ToolRec::put(std::uint32_t i, std::uint32_t value, FieldGroup group) const {
  SharedWord* word = wordAt(instance(), group, i);
  if (word == nullptr) return 0;
  const std::uint32_t stored = swapped(value);
  *word = stored;
  return stored;
}

std::uint32_t ToolRec::setBit(std::uint32_t i, std::uint32_t bit, FieldGroup group) const {
  return put(i, get(i, group) | maskOf(bit), group);
}

std::uint32_t ToolRec::clearBit(std::uint32_t i, std::uint32_t bit, FieldGroup group) const {
  return put(i, get(i, group) & ~maskOf(bit), group);
}

std::span<std::uint8_t> ToolRec::bytes() const {
  std::uint8_t* record = Get_OPENGlobalToolCRecPtr(instance());
  if (record == nullptr) return {};
  return {record, kToolCRecSize};
}

std::uint32_t BTST_TOOLCRECPTR_INTERACTIVESCANPTR(const ToolRec& record, std::uint32_t i,
                                                  std::uint32_t bit) {
  return record.get(i, FieldGroup::InteractiveScan) & maskOf(bit);
}

std::uint32_t GET_ONE_TOOLCRECPTR_QORVSTATUS(Instance& instance, std::uint32_t i) {
  return ToolRec(instance).get(i);
}

}  // namespace quorvane
