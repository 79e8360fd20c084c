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
SharedWord* wordAt(Process& process, std::size_t group, std::uint32_t i) {
  std::uint8_t* record = Get_OPENGlobalToolCRecPtr(process);
  const std::size_t offset = group + 4 * std::size_t{i};
  if (record == nullptr || offset + 4 > kToolCRecSize) return nullptr;
  return reinterpret_cast<SharedWord*>(record + offset);
}

std::uint32_t maskOf(std::uint32_t bit) { return bit < 32 ? std::uint32_t{1} << bit : 0; }

std::uint32_t get(Process& process, std::size_t group, std::uint32_t i) {
  const SharedWord* word = wordAt(process, group, i);
  return word == nullptr ? 0 : swapped(*word);
}

std::uint32_t put(Process& process, std::size_t group, std::uint32_t i, std::uint32_t value) {
  SharedWord* word = wordAt(process, group, i);
  if (word == nullptr) return 0;
  const std::uint32_t stored = swapped(value);
  *word = stored;
  return stored;
}

std::uint32_t setBit(Process& process, std::size_t group, std::uint32_t i, std::uint32_t bit) {
  return put(process, group, i, get(process, group, i) | maskOf(bit));
}

std::uint32_t clearBit(Process& process, std::size_t group, std::uint32_t i, std::uint32_t bit) {
  return put(process, group, i, get(process, group, i) & ~maskOf(bit));
}

}  // namespace

std::uint32_t GET_TOOLCRECPTR(Process& process, std::uint32_t i) {
  return get(process, kFieldsOffset, i);
}

std::uint32_t PUT_TOOLCRECPTR(Process& process, std::uint32_t i, std::uint32_t value) {
  return put(process, kFieldsOffset, i, value);
}

std::uint32_t BSET_TOOLCRECPTR(Process& process, std::uint32_t i, std::uint32_t bit) {
  return setBit(process, kFieldsOffset, i, bit);
}

std::uint32_t BCLR_TOOLCRECPTR(Process& process, std::uint32_t i, std::uint32_t bit) {
  return clearBit(process, kFieldsOffset, i, bit);
}

std::uint32_t GET_TOOLCRECPTR_QORVSTATUS(Process& process, std::uint32_t i) {
  return get(process, kQorvStatusOffset, i);
}

std::uint32_t PUT_TOOLCRECPTR_QORVSTATUS(Process& process, std::uint32_t i, std::uint32_t value) {
  return put(process, kQorvStatusOffset, i, value);
}

std::uint32_t GET_ONE_TOOLCRECPTR_QORVSTATUS(Process& process, std::uint32_t i) {
  const ToolRec record(process);
  return GET_TOOLCRECPTR(process, i);
}

std::uint32_t GET_TOOLCRECPTR_STATUSFLAGS(Process& process, std::uint32_t i) {
  return get(process, kStatusFlagsOffset, i);
}

std::uint32_t PUT_TOOLCRECPTR_STATUSFLAGS(Process& process, std::uint32_t i, std::uint32_t value) {
  return put(process, kStatusFlagsOffset, i, value);
}

std::uint32_t GET_TOOLCRECPTR_INTERACTIVESCANPTR(Process& process, std::uint32_t i) {
  return get(process, kInteractiveScanOffset, i);
}

std::uint32_t PUT_TOOLCRECPTR_INTERACTIVESCANPTR(Process& process, std::uint32_t i,
                                                 std::uint32_t value) {
  return put(process, kInteractiveScanOffset, i, value);
}

std::uint32_t BSET_TOOLCRECPTR_INTERACTIVESCANPTR(Process& process, std::uint32_t i,
                                                  std::uint32_t bit) {
  return setBit(process, kInteractiveScanOffset, i, bit);
}

std::uint32_t BCLR_TOOLCRECPTR_INTERACTIVESCANPTR(Process& process, std::uint32_t i,
                                                  std::uint32_t bit) {
  return clearBit(process, kInteractiveScanOffset, i, bit);
}

std::uint32_t BTST_TOOLCRECPTR_INTERACTIVESCANPTR(Process& process, std::uint32_t i,
                                                  std::uint32_t bit) {
  return get(process, kInteractiveScanOffset, i) & maskOf(bit);
}

}  // namespace quorvane
