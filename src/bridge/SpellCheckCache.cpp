#include "src/bridge/SpellCheckCache.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "src/base/HostWords.h"
#include "src/base/Log.h"
#include "src/base/Text.h"
#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {
namespace {

constexpr std::string_view kOr = " <OR> ";

using Bytes = std::span<std::uint8_t>;

class SpellRecord {
 public:
  SpellRecord(Instance& instance, const std::uint8_t* block) {
    const std::size_t size = instance.platform().sharedMemory.attachedSize(block);
    std::memcpy(bytes_.data(), block, std::min(size, bytes_.size()));
  }

  [[nodiscard]] std::uint32_t count() const { return hostWord32(bytes_, kSpellCountOffset); }
  /// As many as there are slots for.
  [[nodiscard]] std::size_t slots() const { return std::min<std::size_t>(count(), kSpellSlots); }
  [[nodiscard]] std::string_view word() const { return textAt(kSpellWordOffset); }
  [[nodiscard]] std::string_view suggestion(std::size_t slot) const {
    return textAt(kSpellSlotsOffset + slot * kSpellSlotSize);
  }

 private:
  /// Up to its 0, or to the end of its slot.
  [[nodiscard]] std::string_view textAt(std::size_t offset) const {
    const std::string_view slot(reinterpret_cast<const char*>(bytes_.data()) + offset,
                                kSpellSlotSize);
    return slot.substr(0, slot.find('\0'));
  }

  std::array<std::uint8_t, kSpellRecordSize> bytes_{};
};

std::u16string asciiText(Instance& instance, std::string_view text) {
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  return instance.platform()
      .textEncoding.initWithData(bytes, NSStringEncoding::ASCII)
      .value_or(u"");
}

/// The text and its 0, where the slot holds one, and as far as `out` goes. How far to move on.
std::size_t copySlot(std::string_view text, Bytes out) {
  if (text.empty()) return 1;  // nothing is written, not even the 0
  const std::size_t copied = std::min(text.size() + 1, kSpellSlotSize);
  for (std::size_t i = 0; i < std::min(copied, out.size()); ++i) {
    out[i] = i < text.size() ? static_cast<std::uint8_t>(text[i]) : std::uint8_t{0};
  }
  return copied;
}

void listSuggestions(Instance& instance, const SpellRecord& record, Bytes out) {
  for (std::size_t slot = 0; slot < record.slots(); ++slot) {
    const std::string_view text = record.suggestion(slot);
    const std::size_t step = copySlot(text, out);
    const std::u16string guess = asciiText(instance, text);
    Log(instance, "QSPELL-SPELLCHECK_GUESS ", Private{guess});
    out = out.subspan(std::min(step, out.size()));
  }
}

// Each overwrites the one before.
void offerLast(const SpellRecord& record, std::string_view word, Bytes out) {
  for (std::size_t slot = 0; slot < record.slots(); ++slot) {
    copySlot(record.suggestion(slot), out);
    do_PlaceSuggestionStr(word, out);
  }
}

std::size_t append(Bytes line, std::size_t length, std::string_view text) {
  if (length >= line.size()) return length;
  const std::size_t room = line.size() - length - 1;
  const auto end = std::ranges::copy(text.substr(0, room), line.subspan(length).begin()).out;
  *end = 0;
  return length + std::min(room, text.size());
}

}  // namespace

std::uint8_t* GetTool_SpellCPtr(Instance& instance) {
  auto& state = instance.state<SpellCheckState>();
  if (state.OPENGlobalTool_SpellCPtr == nullptr) {
    state.OPENGlobalTool_SpellCPtr = AttachSegment(instance, kSpellRecordKey, kSpellRecordSize);
  }
  state.GlobalTool_SpellCPtr = state.OPENGlobalTool_SpellCPtr;
  return state.OPENGlobalTool_SpellCPtr;
}

void CloseToolSpellCheckRecPtr(Instance& /*process*/, const void* /*address*/) {}

std::uint32_t GET_LAST_SPELLCHECK(Instance& instance, std::string_view word,
                                  std::span<std::uint8_t> out, std::uint32_t mode) {
  const std::uint8_t* const block = GetTool_SpellCPtr(instance);
  if (block == nullptr) {
    Log(instance, "**NO SHARED MEM");
    return 0;
  }
  const std::u16string asked = asciiText(instance, word);
  Log(instance, "***GET_LAST_SPELLCHECK ", Private{asked}, " ");
  const SpellRecord record(instance, block);
  if (word != record.word()) return 0;
  if (out.data() == nullptr) return record.count();
  if (mode == 0) listSuggestions(instance, record, out);
  if (mode == 1) offerLast(record, word, out);
  return record.count();
}

std::optional<std::vector<std::u16string>> GET_LAST_SPELLCHECK_ARRY(Instance& instance,
                                                                    std::u16string_view word) {
  const std::uint8_t* const block = GetTool_SpellCPtr(instance);
  if (block == nullptr) {
    Log(instance, "***GET_LAST_SPELLCHECK_ARRY SHARED MEM ERRR");
    return {};
  }
  const SpellRecord record(instance, block);
  if (toUtf8(word) != record.word() || record.count() == 0) return {};
  std::vector<std::u16string> suggestions;
  for (std::size_t slot = 0; slot < record.slots(); ++slot) {
    const std::string_view text = record.suggestion(slot);
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    auto decoded = instance.platform().textEncoding.initWithData(bytes, NSStringEncoding::UTF8);
    if (decoded) suggestions.push_back(std::move(*decoded));
  }
  return suggestions;
}

std::uint32_t do_PlaceSuggestionStr(std::string_view word, std::span<std::uint8_t> line) {
  if (word.empty()) return 0;
  auto length = static_cast<std::size_t>(std::ranges::find(line, 0) - line.begin());
  if (length < kLongestSuggestionLine) {
    if (length > 0) length = append(line, length, kOr);
    length = append(line, length, word);
  }
  return static_cast<std::uint32_t>(length);
}

// The two keys are mixed on purpose.
std::uint8_t* DO_GetToolSpellCheckRecordPtr(Instance& instance) {
  std::uint8_t* const seen = AttachSegment(instance, kSpellRecordKey, kSpellRecordSize);
  if (seen == nullptr) {
    Log(instance, "******** NO QUORVANESPELLRECCOM");
  } else {
    instance.platform().sharedMemory.shmdt(seen);
  }
  auto& attached = instance.state<SpellCheckState>().OPENGlobalTool_SpellCPtr;
  if (attached == nullptr) attached = AttachSegment(instance, kToolCRecKey, kToolCRecSize);
  return attached;
}

}  // namespace quorvane
