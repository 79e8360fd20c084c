#include "hosts/keyboard/Translate.h"

#include <algorithm>
#include <optional>
#include <string>

#include "platform/UCKeyboardLayout.h"
#include "src/base/HostWords.h"

namespace quorvane::keyboard {
namespace {

constexpr OSStatus kParamErr = -50;

using Bytes = std::span<const std::uint8_t>;

bool isNone(std::uint16_t output) { return output >= kUCKeyOutputNone; }

/// Outside the bytes there is no character; a 0 would be one.
std::uint16_t outputAt(Bytes bytes, std::size_t offset) {
  const bool inside = offset + sizeof(std::uint16_t) <= bytes.size();
  return inside ? hostWord16(bytes, offset) : kUCKeyOutputNone;
}

/// An offset that is missing leads outside: at 0 lies nothing but the head.
std::size_t offsetAt(Bytes bytes, std::size_t place) {
  const std::size_t offset = hostWord32(bytes, place);
  return offset == 0 ? bytes.size() : offset;
}

/// One of the blocks behind a keyboard-type entry. Where the layout has none, `count` is 0.
struct Block {
  std::size_t offset = 0;
  std::uint32_t count = 0;
};

struct Layout {
  Bytes bytes;
  std::size_t modifiers = 0;
  Block tables;
  Block records;
  Block terminators;
  Block sequences;
};

/// What a key typed, and the dead key that waits behind it.
struct Typed {
  std::u16string text;
  std::uint32_t state = 0;
};

bool hasFormat(Bytes bytes, std::size_t offset, std::uint16_t format) {
  return offset != 0 && hostWord16(bytes, offset) == format;
}

Block shortBlock(Bytes bytes, std::size_t offset, std::uint16_t format, std::size_t count) {
  if (!hasFormat(bytes, offset, format)) return {};
  return {offset, hostWord16(bytes, offset + count)};
}

/// The entry whose range holds the type, else the first. Entries beyond the bytes don't count.
std::size_t entryOf(Bytes bytes, std::uint32_t type) {
  const std::size_t room = (bytes.size() - kLayoutTypeList) / kTypeEntrySize;
  const std::size_t count = std::min<std::size_t>(hostWord32(bytes, kLayoutTypeCount), room);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = kLayoutTypeList + i * kTypeEntrySize;
    if (type >= hostWord32(bytes, entry + kTypeFirst) &&
        type <= hostWord32(bytes, entry + kTypeLast)) {
      return entry;
    }
  }
  return kLayoutTypeList;
}

std::optional<Layout> layoutIn(Bytes bytes, std::uint32_t type) {
  const bool hasEntry =
      bytes.size() >= kLayoutTypeList + kTypeEntrySize && hostWord32(bytes, kLayoutTypeCount) != 0;
  if (!hasEntry || hostWord16(bytes, 0) != kUCKeyLayoutHeaderFormat) return {};
  const std::size_t entry = entryOf(bytes, type);
  const auto offset = [&](std::size_t field) { return hostWord32(bytes, entry + field); };
  const std::size_t modifiers = offset(kTypeModifiersOffset);
  const std::size_t tables = offset(kTypeTablesOffset);
  if (!hasFormat(bytes, modifiers, kUCKeyModifiersToTableNumFormat) ||
      !hasFormat(bytes, tables, kUCKeyToCharTableIndexFormat)) {
    return {};
  }
  return Layout{
      .bytes = bytes,
      .modifiers = modifiers,
      .tables = {tables, hostWord32(bytes, tables + kTablesCount)},
      .records = shortBlock(bytes, offset(kTypeRecordsOffset), kUCKeyStateRecordsIndexFormat,
                            kRecordsCount),
      .terminators = shortBlock(bytes, offset(kTypeTerminatorsOffset), kUCKeyStateTerminatorsFormat,
                                kTerminatorsCount),
      .sequences = shortBlock(bytes, offset(kTypeSequencesOffset), kUCKeySequenceDataIndexFormat,
                              kSequencesCount),
  };
}

std::uint32_t tableFor(const Layout& layout, std::uint32_t modifierKeyState) {
  const std::size_t place = layout.modifiers + kModifiersList + std::size_t{modifierKeyState};
  const bool listed =
      modifierKeyState < hostWord32(layout.bytes, layout.modifiers + kModifiersCount) &&
      place < layout.bytes.size();
  return listed ? layout.bytes[place]
                : hostWord16(layout.bytes, layout.modifiers + kModifiersDefault);
}

std::uint16_t outputOf(const Layout& layout, std::uint16_t keyCode, std::uint32_t modifiers) {
  const std::size_t index = layout.tables.offset;
  const std::uint32_t table = tableFor(layout, modifiers);
  if (table >= layout.tables.count || keyCode >= hostWord16(layout.bytes, index + kTablesSize)) {
    return kUCKeyOutputNone;
  }
  const std::size_t keys = offsetAt(layout.bytes, index + kTablesList + std::size_t{table} * 4);
  return outputAt(layout.bytes, keys + std::size_t{keyCode} * 2);
}

std::u16string sequence(const Layout& layout, std::size_t index) {
  const std::size_t offsets = layout.sequences.offset + kSequencesList + index * 2;
  const std::size_t first = layout.sequences.offset + hostWord16(layout.bytes, offsets);
  const std::size_t end = layout.sequences.offset + hostWord16(layout.bytes, offsets + 2);
  std::u16string text;
  for (std::size_t place = first; place + 2 <= std::min(end, layout.bytes.size()); place += 2) {
    text += static_cast<char16_t>(hostWord16(layout.bytes, place));
  }
  return text;
}

/// A unit that only looks like the number of a sequence is a character.
std::u16string textOf(const Layout& layout, std::uint16_t output) {
  if (isNone(output)) return {};
  const bool numbered = (output & kUCKeyOutputTestForIndexMask) == kUCKeyOutputSequenceIndexMask;
  const std::uint32_t index = output & kUCKeyOutputGetIndexMask;
  if (numbered && index < layout.sequences.count) return sequence(layout, index);
  return {static_cast<char16_t>(output)};
}

std::u16string terminatorOf(const Layout& layout, std::uint32_t state) {
  if (state == 0 || state > layout.terminators.count) return {};
  const std::size_t list = layout.terminators.offset + kTerminatorsList;
  return textOf(layout, outputAt(layout.bytes, list + (std::size_t{state} - 1) * 2));
}

std::optional<Typed> terminalEntry(const Layout& layout, std::size_t entry, std::uint32_t state) {
  if (hostWord16(layout.bytes, entry) != state) return {};
  return Typed{textOf(layout, outputAt(layout.bytes, entry + 2)), 0};
}

/// A range's character rises by the multiplier with each state.
std::optional<Typed> rangeEntry(const Layout& layout, std::size_t entry, std::uint32_t state) {
  const std::uint32_t first = hostWord16(layout.bytes, entry);
  const std::uint32_t range = hostNumber<std::uint8_t>(layout.bytes, entry + 2);
  if (state < first || state > first + range) return {};
  const std::uint32_t rise = hostNumber<std::uint8_t>(layout.bytes, entry + 3) * (state - first);
  const std::uint16_t output = outputAt(layout.bytes, entry + 4);
  const auto risen = static_cast<std::uint16_t>(output + rise);
  return Typed{textOf(layout, isNone(output) ? output : risen),
               hostWord16(layout.bytes, entry + 6)};
}

/// What the waiting dead key makes of the record, if anything.
std::optional<Typed> composed(const Layout& layout, std::size_t record, std::uint32_t state) {
  if (state == 0) return {};
  const std::uint16_t format = hostWord16(layout.bytes, record + kRecordEntryFormat);
  const bool terminal = format == kUCKeyStateEntryTerminalFormat;
  if (!terminal && format != kUCKeyStateEntryRangeFormat) return {};
  const std::size_t size = terminal ? 4 : 8;
  const std::size_t count = hostWord16(layout.bytes, record + kRecordEntryCount);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = record + kRecordEntryList + i * size;
    auto found = terminal ? terminalEntry(layout, entry, state) : rangeEntry(layout, entry, state);
    if (found) return found;
  }
  return {};
}

std::optional<std::size_t> recordOf(const Layout& layout, std::uint16_t output) {
  const bool numbered = (output & kUCKeyOutputTestForIndexMask) == kUCKeyOutputStateIndexMask;
  const std::size_t index = output & kUCKeyOutputGetIndexMask;
  if (!numbered || index >= layout.records.count) return {};
  return offsetAt(layout.bytes, layout.records.offset + kRecordsList + index * 4);
}

Typed typed(const Layout& layout, std::uint16_t output, std::uint32_t state) {
  const auto record = recordOf(layout, output);
  if (!record) return {terminatorOf(layout, state) + textOf(layout, output), 0};
  if (auto found = composed(layout, *record, state)) return *std::move(found);
  const std::uint16_t character = outputAt(layout.bytes, *record + kRecordCharacter);
  return {terminatorOf(layout, state) + textOf(layout, character),
          hostWord16(layout.bytes, *record + kRecordNextState)};
}

}  // namespace

OSStatus Translator::UCKeyTranslate(std::span<const std::uint8_t> keyLayout,
                                    std::uint16_t virtualKeyCode, std::uint16_t keyAction,
                                    std::uint32_t modifierKeyState, std::uint32_t keyboardType,
                                    std::uint32_t keyTranslateOptions, std::uint32_t& deadKeyState,
                                    std::span<char16_t> unicodeString, std::size_t& actualLength) {
  const std::size_t line = record(journal_, "UCKeyTranslate ", virtualKeyCode, " action ",
                                  keyAction, " modifiers ", modifierKeyState);
  const auto done = [&](OSStatus status) { return recordResult(journal_, line, status); };
  actualLength = 0;
  const auto layout = layoutIn(keyLayout, keyboardType & 0xFF);
  if (!layout) return done(kParamErr);
  const std::uint16_t output = outputOf(*layout, virtualKeyCode, modifierKeyState);
  // A key without a character, such as a modifier, leaves a waiting dead key in place.
  if (keyAction == kUCKeyActionUp || isNone(output)) return done(noErr);
  Typed result = typed(*layout, output, deadKeyState);
  if (keyAction == kUCKeyActionDisplay || (keyTranslateOptions & kUCKeyTranslateNoDeadKeysMask)) {
    result.text += terminatorOf(*layout, result.state);
    result.state = 0;
  }
  if (result.text.size() > unicodeString.size()) return done(kUCOutputBufferTooSmall);
  std::ranges::copy(result.text, unicodeString.begin());
  actualLength = result.text.size();
  deadKeyState = result.state;
  return done(noErr);
}

std::uint32_t Translator::LMGetKbdType() {
  if (journal_) journal_->count();
  return kKeyboardType;
}

}  // namespace quorvane::keyboard
