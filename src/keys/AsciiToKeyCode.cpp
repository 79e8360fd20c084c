#include "src/keys/AsciiToKeyCode.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/CarbonEvents.h"
#include "platform/UCKeyboardLayout.h"
#include "src/base/HostWords.h"
#include "src/base/Log.h"

namespace quorvane {
namespace {

using Layout = std::span<const std::uint8_t>;
using LayoutData = std::shared_ptr<const std::vector<std::uint8_t>>;

// No key.
constexpr std::uint16_t kWordAlways = 0x0080;

struct QuoteRow {
  std::uint16_t character;
  std::uint16_t modifierWord;
};
// Mac OS Roman, double and single: those that the bracket keys yield under option. The word alone
// is known; the key is looked up by the character itself, in vain, which is wanted.
constexpr std::array<QuoteRow, 4> kCurlyQuotes{
    {{210, optionKey}, {211, optionKey | shiftKey}, {212, optionKey}, {213, optionKey | shiftKey}}};

// Option before shift, and never the bare key: a character that option leaves as it is counts as
// one that needs option.
struct Trial {
  std::uint32_t modifierKeyState;
  bool shift;
  bool option;
};
constexpr std::array<Trial, 3> kTrials{
    {{optionKey >> 8, false, true}, {shiftKey >> 8, true, false}, {10, true, true}}};

// Tables may overlap and counts go up to 2^32, so that bytes alone don't bound a walk. A real
// layout has a tenth of these.
constexpr std::uint32_t kLookLimit = 1U << 20;

// The character is sign-extended: from 0x80 on it equals no unit.
bool isCharacter(std::uint16_t unit, std::int8_t character) { return unit == character; }

/// The first key whose output, whatever its keyboard type and modifiers, is the character. What
/// lies outside the bytes isn't there.
class LayoutWalk {
 public:
  LayoutWalk(Layout layout, std::int8_t character) : layout_(layout), character_(character) {}

  std::optional<std::uint16_t> keyCode() {
    const std::size_t count =
        present(kLayoutTypeList, kTypeEntrySize, hostWord32(layout_, kLayoutTypeCount));
    for (std::size_t i = 0; i < count && mayLook(); ++i) {
      if (const auto key = keyInType(kLayoutTypeList + i * kTypeEntrySize)) return key;
    }
    return std::nullopt;
  }

 private:
  struct StateRecords {
    std::size_t offset = 0;  ///< 0: none
    std::uint16_t count = 0;
  };

  std::optional<std::uint16_t> keyInType(std::size_t entry) {
    const std::size_t index = hostWord32(layout_, entry + kTypeTablesOffset);
    if (hostWord16(layout_, index) != kUCKeyToCharTableIndexFormat) return std::nullopt;
    const StateRecords records = stateRecords(hostWord32(layout_, entry + kTypeRecordsOffset));
    const std::uint16_t size = hostWord16(layout_, index + kTablesSize);
    const std::size_t count =
        present(index + kTablesList, 4, hostWord32(layout_, index + kTablesCount));
    for (std::size_t i = 0; i < count && mayLook(); ++i) {
      const std::size_t table = hostWord32(layout_, index + kTablesList + 4 * i);
      if (const auto key = keyInTable(table, size, records)) return key;
    }
    return std::nullopt;
  }

  std::optional<std::uint16_t> keyInTable(std::size_t table, std::uint16_t size,
                                          const StateRecords& records) {
    const std::size_t count = present(table, 2, size);
    for (std::size_t k = 0; k < count && mayLook(); ++k) {
      if (yields(hostWord16(layout_, table + 2 * k), records)) return static_cast<std::uint16_t>(k);
    }
    return std::nullopt;
  }

  // Sequences and "no character" lie far above any 7-bit character and need no test of their own.
  bool yields(std::uint16_t output, const StateRecords& records) const {
    const bool numbered = (output & kUCKeyOutputTestForIndexMask) == kUCKeyOutputStateIndexMask;
    const std::size_t index = output & kUCKeyOutputGetIndexMask;
    // The count itself passes: what lies there is looked at like a record.
    const bool recorded = numbered && records.offset != 0 && index <= records.count;
    if (!recorded) return isCharacter(output, character_);
    const std::size_t place = records.offset + kRecordsList + 4 * index;
    return present(place, 4, 1) != 0 && recordYields(hostWord32(layout_, place));
  }

  bool recordYields(std::size_t record) const {
    return present(record, 2, 1) != 0 &&
           isCharacter(hostWord16(layout_, record + kRecordCharacter), character_);
  }

  StateRecords stateRecords(std::size_t offset) const {
    if (hostWord16(layout_, offset) != kUCKeyStateRecordsIndexFormat) return {};
    return {offset, hostWord16(layout_, offset + kRecordsCount)};
  }

  /// How many of the `claimed` items at `offset` lie wholly inside the layout.
  [[nodiscard]] std::size_t present(std::size_t offset, std::size_t itemSize,
                                    std::size_t claimed) const {
    if (offset >= layout_.size()) return 0;
    return std::min(claimed, (layout_.size() - offset) / itemSize);
  }

  bool mayLook() { return looks_++ < kLookLimit; }

  Layout layout_;
  std::int8_t character_;
  std::uint32_t looks_ = 0;
};

struct CurrentLayout {
  LayoutData data;
  std::string_view failure;
};
CurrentLayout currentLayout(Instance& instance) {
  TISInputSourceRef source =
      instance.platform().textInputSources.TISCopyCurrentASCIICapableKeyboardLayoutInputSource();
  if (!source) return {nullptr, "Could not find keyboard layout"};
  LayoutData data = source->kTISPropertyUnicodeKeyLayoutData;
  source.reset();
  if (!data) return {nullptr, "Could not find layout data"};
  return {std::move(data), {}};
}

std::uint32_t keyboardType(Instance& instance) {
  return instance.platform().unicodeUtilities.LMGetKbdType() & 0xFF;
}

}  // namespace

std::uint16_t AsciiToKeyCode(Instance& instance, std::uint16_t character) {
  std::int32_t shift = 0;
  std::int32_t option = 0;
  const std::uint32_t keyCode =
      do_keyCodeForChar(instance, static_cast<std::int8_t>(character), shift, option);
  // On a known layout the code tells what is being typed.
  Log(instance, "thekey: ", PrivateNumber{keyCode});
  return static_cast<std::uint16_t>(keyCode);
}

std::uint16_t ComposeEventMessage(Instance& instance, std::uint32_t character,
                                  std::uint16_t* modifiersOut) {
  return Get_keyCodeForChar(instance, static_cast<std::uint16_t>(character), modifiersOut);
}

std::uint16_t Get_keyCodeForChar(Instance& instance, std::uint16_t character,
                                 std::uint16_t* modifiersOut) {
  std::uint32_t word = kWordAlways;
  std::uint32_t keyCode = kNoKeyCode;
  const auto* quote = std::find_if(kCurlyQuotes.begin(), kCurlyQuotes.end(),
                                   [&](const QuoteRow& row) { return row.character == character; });
  if (quote != kCurlyQuotes.end()) {
    word |= quote->modifierWord;
  } else {
    std::int32_t shift = 0;
    std::int32_t option = 0;
    keyCode = do_keyCodeForChar(instance, static_cast<std::int8_t>(character), shift, option);
    if (shift != 0) word |= shiftKey;
    if (option != 0) word |= optionKey;
  }
  if (modifiersOut != nullptr) *modifiersOut = static_cast<std::uint16_t>(word);
  return static_cast<std::uint16_t>(keyCode);
}

std::uint32_t do_keyCodeForChar(Instance& instance, std::int8_t character, std::int32_t& shiftOut,
                                std::int32_t& optionOut) {
  const CurrentLayout layout = currentLayout(instance);
  if (!layout.data) {
    Log(instance, layout.failure);
    return kNoKeyCode;
  }
  return keyCodeForCharWithLayout(instance, character, *layout.data, shiftOut, optionOut);
}

std::uint32_t keyCodeForCharWithLayout(Instance& instance, std::int8_t character,
                                       std::span<const std::uint8_t> layoutBytes,
                                       std::int32_t& shiftOut, std::int32_t& optionOut) {
  const auto keyCode = LayoutWalk(layoutBytes, character).keyCode();
  if (!keyCode) return kNoKeyCode;
  checkModifiers(instance, character, layoutBytes, *keyCode, shiftOut, optionOut);
  return *keyCode;
}

void checkModifiers(Instance& instance, std::int8_t character,
                    std::span<const std::uint8_t> layoutBytes, std::uint16_t keyCode,
                    std::int32_t& shiftOut, std::int32_t& optionOut) {
  const std::uint32_t type = keyboardType(instance);
  // One for all trials: a dead key under option spoils those behind it. This is wanted.
  std::uint32_t deadKeyState = 0;
  for (const Trial& trial : kTrials) {
    std::array<char16_t, 1> unit{};
    std::size_t length = 0;
    const OSStatus status = instance.platform().unicodeUtilities.UCKeyTranslate(
        layoutBytes, keyCode, kUCKeyActionDown, trial.modifierKeyState, type, 0, deadKeyState, unit,
        length);
    if (status != noErr || length == 0 || !isCharacter(unit[0], character)) continue;
    if (trial.shift) shiftOut = 1;
    if (trial.option) optionOut = 1;
    return;
  }
}

std::optional<std::u16string> createStringForKey(Instance& instance, std::uint16_t keyCode) {
  const CurrentLayout layout = currentLayout(instance);
  if (!layout.data) {
    instance.platform().console.print(std::string(layout.failure) + "\n");
    return std::nullopt;
  }
  std::uint32_t deadKeyState = 0;
  std::array<char16_t, 4> units{};
  std::size_t length = 0;
  instance.platform().unicodeUtilities.UCKeyTranslate(*layout.data, keyCode, kUCKeyActionDisplay, 0,
                                                      keyboardType(instance), 0, deadKeyState,
                                                      units, length);
  return std::u16string(1, units[0]);
}

std::shared_ptr<const std::vector<std::uint8_t>> Get_KeyBoardLayout_Ptr(Instance& instance) {
  const TISInputSourceRef source =
      instance.platform().textInputSources.TISCopyCurrentKeyboardInputSource();
  return source ? source->kTISPropertyUnicodeKeyLayoutData : nullptr;
}

std::int32_t InitAscii2KeyCodeTable() { return 0; }

}  // namespace quorvane
