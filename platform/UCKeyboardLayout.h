#pragma once
// The format of keyboard layout data, `UCKeyboardLayout`, as the platform publishes it with its
// Unicode Utilities. Numbers are in host order; each offset counts from the first byte of the
// layout, save those inside the sequence data.
//
//   layout    format version feature-info-offset type-count, then the keyboard-type entries
//   entry     first last modifiers tables records terminators sequences       (28 bytes, offsets)
//   modifiers format default-table count, then one table number a byte, by modifier key state
//   tables    format keys-per-table count, then the offsets of the tables; a table: 16-bit outputs
//   records   format count, then the offsets of the state records
//   record    character next-state entry-count entry-format, then the entries: what a dead key made
//             of it. Terminal entry: state, character. Range entry: first state, range (1 byte),
//             multiplier (1 byte), character, next state
//   terminators  format count, then for each state from 1 on what a dead key leaves behind
//   sequences format count, then count + 1 offsets from the start of this block; in between UTF-16
//
// An output e: e & 0xC000 = 0x4000 names a state record, 0x8000 a sequence, by e & 0x3FFF; 0xFFFE
// and 0xFFFF are no character; any other is a UTF-16 unit.

#include <cstddef>
#include <cstdint>

namespace quorvane {

inline constexpr std::uint16_t kUCKeyLayoutHeaderFormat = 0x1002;
inline constexpr std::uint16_t kUCKeyModifiersToTableNumFormat = 0x3001;
inline constexpr std::uint16_t kUCKeyToCharTableIndexFormat = 0x4001;
inline constexpr std::uint16_t kUCKeyStateRecordsIndexFormat = 0x5001;
inline constexpr std::uint16_t kUCKeyStateTerminatorsFormat = 0x6001;
inline constexpr std::uint16_t kUCKeySequenceDataIndexFormat = 0x7001;
inline constexpr std::uint16_t kUCKeyStateEntryTerminalFormat = 1;
inline constexpr std::uint16_t kUCKeyStateEntryRangeFormat = 2;

inline constexpr std::uint16_t kUCKeyOutputTestForIndexMask = 0xC000;
inline constexpr std::uint16_t kUCKeyOutputStateIndexMask = 0x4000;
inline constexpr std::uint16_t kUCKeyOutputSequenceIndexMask = 0x8000;
inline constexpr std::uint16_t kUCKeyOutputGetIndexMask = 0x3FFF;
inline constexpr std::uint16_t kUCKeyOutputNone = 0xFFFE;  ///< and 0xFFFF

// Byte offsets inside a layout.
inline constexpr std::size_t kLayoutTypeCount = 8;
inline constexpr std::size_t kLayoutTypeList = 12;
inline constexpr std::size_t kTypeEntrySize = 28;

// Inside a keyboard-type entry.
inline constexpr std::size_t kTypeFirst = 0;
inline constexpr std::size_t kTypeLast = 4;
inline constexpr std::size_t kTypeModifiersOffset = 8;
inline constexpr std::size_t kTypeTablesOffset = 12;
inline constexpr std::size_t kTypeRecordsOffset = 16;
inline constexpr std::size_t kTypeTerminatorsOffset = 20;
inline constexpr std::size_t kTypeSequencesOffset = 24;

// Inside each block, behind its 16-bit format.
inline constexpr std::size_t kModifiersDefault = 2;
inline constexpr std::size_t kModifiersCount = 4;
inline constexpr std::size_t kModifiersList = 8;
inline constexpr std::size_t kTablesSize = 2;
inline constexpr std::size_t kTablesCount = 4;
inline constexpr std::size_t kTablesList = 8;
inline constexpr std::size_t kRecordsCount = 2;
inline constexpr std::size_t kRecordsList = 4;
inline constexpr std::size_t kTerminatorsCount = 2;
inline constexpr std::size_t kTerminatorsList = 4;
inline constexpr std::size_t kSequencesCount = 2;
inline constexpr std::size_t kSequencesList = 4;

// Inside a state record.
inline constexpr std::size_t kRecordCharacter = 0;
inline constexpr std::size_t kRecordNextState = 2;
inline constexpr std::size_t kRecordEntryCount = 4;
inline constexpr std::size_t kRecordEntryFormat = 6;
inline constexpr std::size_t kRecordEntryList = 8;

}  // namespace quorvane
