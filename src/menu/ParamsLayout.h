#pragma once
// The resources of the parameter file, which the main application owns and both read and write.
// Numbers are big-endian in the file and in native order here.
//
//   QKYS 8888   shortcuts, back to back: those of every application that has none of its own
//   QKYX 8888   count of blocks (4); each: ApplicationBlock, its shortcuts
//   CGMI 8889   AppSwitches, back to back
//   Pmen 8888   the Pencil Menu is to run (1)
//   Fmen 8888   the menu has been activated (1)
//   AutC 8888   completion: commit with a space (1), vertical panel (1), Shift as a toggle (1)

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "platform/MacTypes.h"

namespace quorvane {

inline constexpr FourCharCode QORVPARAMMENUCMMDKEYRESTYPE = "QKYS"_4cc;
inline constexpr FourCharCode QORVPARAMMENUKEYRESTYPE = "QKYX"_4cc;
inline constexpr FourCharCode QORVPARAMCAPPKEYRESTYPE = "CGMI"_4cc;
inline constexpr FourCharCode kPencilMenuFlag = "Pmen"_4cc;
inline constexpr FourCharCode kMenuActivationFlag = "Fmen"_4cc;
inline constexpr FourCharCode kAutoCompleteFlags = "AutC"_4cc;
/// Letters in this order: the glyph table is a `GLYP`, so that it stays as it is in the file.
inline constexpr FourCharCode kFlippedGlyphs = "GYLP"_4cc;
inline constexpr std::int16_t kParamsID = 8888;
inline constexpr std::int16_t kAppSwitchesID = 8889;

struct Shortcut {
  std::uint32_t commandID = 0;
  std::uint32_t modifiers = 0;  ///< classic mask
  std::int16_t keyCode = -1;    ///< -1: no key
  std::uint16_t unused = 0;     ///< never swapped
};
static_assert(sizeof(Shortcut) == 12);
static_assert(offsetof(Shortcut, modifiers) == 4);
static_assert(offsetof(Shortcut, keyCode) == 8);

struct ApplicationBlock {
  FourCharCode signature = 0;
  std::array<std::uint8_t, 16> unused{};
  std::uint32_t count = 0;  ///< of the shortcuts that follow; of this only the low 24 bits count
};
static_assert(sizeof(ApplicationBlock) == 24);
static_assert(offsetof(ApplicationBlock, count) == 20);

inline constexpr std::uint32_t kCountMask = 0xFFFFFF;

/// NUL-terminated, cut to 31 bytes.
using BundleIdentifier = std::array<std::uint8_t, 32>;

/// Of an application that has none.
inline constexpr FourCharCode kNoSignature = "\?\?\?\?"_4cc;

struct AppSwitches {
  FourCharCode signature = 0;  ///< 0: a free record
  std::uint32_t switches = 0;  ///< CURRENTAPPFLAGSTATUS
  BundleIdentifier bundleIdentifier{};
};
static_assert(sizeof(AppSwitches) == 40);
static_assert(offsetof(AppSwitches, switches) == 4);
static_assert(offsetof(AppSwitches, bundleIdentifier) == 8);

struct Glyph {
  std::uint16_t first = 0;
  std::uint16_t second = 0;
};
static_assert(sizeof(Glyph) == 4);

/// All of the record must lie in `bytes`.
template <class Record>
[[nodiscard]] Record recordAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
  assert(offset <= bytes.size() && bytes.size() - offset >= sizeof(Record));
  Record record;
  std::memcpy(&record, bytes.data() + offset, sizeof record);
  return record;
}
template <class Record>
void putRecord(std::span<std::uint8_t> bytes, std::size_t offset, const Record& record) {
  assert(offset <= bytes.size() && bytes.size() - offset >= sizeof(Record));
  std::memcpy(bytes.data() + offset, &record, sizeof record);
}

}  // namespace quorvane
