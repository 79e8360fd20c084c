#include "hosts/keyboard/LayoutWriter.h"

#include <limits>
#include <stdexcept>

#include "platform/UCKeyboardLayout.h"

namespace quorvane::keyboard {
namespace {

constexpr std::size_t kIndexes = kUCKeyOutputGetIndexMask + std::size_t{1};

template <class Number>
Number narrow(std::size_t value, const char* what) {
  if (value > std::numeric_limits<Number>::max()) throw std::length_error(what);
  return static_cast<Number>(value);
}

/// The bytes of a layout or of one of its blocks.
class ByteBlock {
 public:
  template <class Number>
  void put(Number number) {
    const auto* first = reinterpret_cast<const std::uint8_t*>(&number);
    bytes_.insert(bytes_.end(), first, first + sizeof number);
  }
  void put16(std::size_t number) { put(narrow<std::uint16_t>(number, "too much for a layout")); }
  void put32(std::size_t number) { put(narrow<std::uint32_t>(number, "too much for a layout")); }
  void append(const ByteBlock& other) {
    bytes_.insert(bytes_.end(), other.bytes_.begin(), other.bytes_.end());
  }
  void align() { bytes_.resize((bytes_.size() + 3) / 4 * 4); }
  [[nodiscard]] std::size_t size() const { return bytes_.size(); }
  [[nodiscard]] std::vector<std::uint8_t> take() { return std::move(bytes_); }

 private:
  std::vector<std::uint8_t> bytes_;
};

/// The number that a key has in a numbered list, where it is entered on first use.
template <class Key>
std::size_t numberOf(std::map<Key, std::size_t>& numbers, std::vector<Key>& list, const Key& key) {
  const auto [place, isNew] = numbers.emplace(key, list.size());
  if (isNew) list.push_back(key);
  return place->second;
}

class Writer {
 public:
  explicit Writer(const LayoutTables& tables) : tables_(tables) {}

  std::vector<std::uint8_t> layout();

 private:
  std::uint16_t characters(const std::u16string& text);
  std::uint16_t output(const KeyOutput& key);
  [[nodiscard]] bool composes(const std::u16string& text) const;

  ByteBlock modifiers() const;
  ByteBlock tables(std::size_t offset);
  ByteBlock records(std::size_t offset);
  ByteBlock record(const KeyOutput& key);
  ByteBlock terminators();
  ByteBlock sequences() const;

  using RecordKey = std::pair<std::uint16_t, std::u16string>;  ///< dead key, text

  const LayoutTables& tables_;
  std::map<RecordKey, std::size_t> recordNumbers_;
  std::vector<RecordKey> records_;
  std::map<std::u16string, std::size_t> sequenceNumbers_;
  std::vector<std::u16string> sequences_;
};

bool Writer::composes(const std::u16string& text) const {
  for (const DeadKey& deadKey : tables_.deadKeys) {
    if (deadKey.composed.contains(text)) return true;
  }
  return false;
}

/// One unit that doesn't look like a number stands for itself; all else is a sequence.
std::uint16_t Writer::characters(const std::u16string& text) {
  if (text.empty()) return kUCKeyOutputNone;
  const std::uint16_t unit = text.front();
  const bool numbered = unit >= kUCKeyOutputStateIndexMask && unit < kUCKeyOutputTestForIndexMask;
  if (text.size() == 1 && !numbered && unit < kUCKeyOutputNone) return unit;
  const std::size_t number = numberOf(sequenceNumbers_, sequences_, text);
  if (number >= kIndexes) throw std::length_error("too many texts for a layout");
  return static_cast<std::uint16_t>(kUCKeyOutputSequenceIndexMask | number);
}

std::uint16_t Writer::output(const KeyOutput& key) {
  if (key.deadKey == 0 && !composes(key.text)) return characters(key.text);
  const std::size_t number = numberOf(recordNumbers_, records_, RecordKey(key.deadKey, key.text));
  if (number >= kIndexes) throw std::length_error("too many state records for a layout");
  return static_cast<std::uint16_t>(kUCKeyOutputStateIndexMask | number);
}

ByteBlock Writer::modifiers() const {
  ByteBlock block;
  block.put(kUCKeyModifiersToTableNumFormat);
  block.put16(0);
  block.put32(tables_.tableOf.size());
  for (const std::uint8_t table : tables_.tableOf) block.put(table);
  return block;
}

ByteBlock Writer::tables(std::size_t offset) {
  const std::size_t count = tables_.tables.size();
  if (count > kModifierStates) throw std::length_error("too many tables for a layout");
  ByteBlock block;
  block.put(kUCKeyToCharTableIndexFormat);
  block.put16(kKeyCount);
  block.put32(count);
  const std::size_t first = offset + kTablesList + count * 4;
  for (std::size_t i = 0; i < count; ++i) block.put32(first + i * kKeyCount * 2);
  for (const auto& table : tables_.tables) {
    for (const KeyOutput& key : table) block.put(output(key));
  }
  return block;
}

ByteBlock Writer::record(const KeyOutput& key) {
  ByteBlock entries;
  std::size_t count = 0;
  for (std::size_t state = 1; state <= tables_.deadKeys.size() && key.deadKey == 0; ++state) {
    const auto& composed = tables_.deadKeys[state - 1].composed;
    const auto found = composed.find(key.text);
    if (found == composed.end()) continue;
    entries.put16(state);
    entries.put(characters(found->second));
    ++count;
  }
  ByteBlock record;
  record.put(characters(key.text));
  record.put(key.deadKey);
  record.put16(count);
  record.put(kUCKeyStateEntryTerminalFormat);
  record.append(entries);
  return record;
}

ByteBlock Writer::records(std::size_t offset) {
  ByteBlock index;
  ByteBlock bodies;
  index.put(kUCKeyStateRecordsIndexFormat);
  index.put16(records_.size());
  const std::size_t first = offset + kRecordsList + records_.size() * 4;
  for (const auto& [deadKey, text] : records_) {
    index.put32(first + bodies.size());
    bodies.append(record({text, deadKey}));
  }
  index.append(bodies);
  return index;
}

ByteBlock Writer::terminators() {
  ByteBlock block;
  block.put(kUCKeyStateTerminatorsFormat);
  block.put16(tables_.deadKeys.size());
  for (const DeadKey& deadKey : tables_.deadKeys) block.put(characters(deadKey.terminator));
  return block;
}

ByteBlock Writer::sequences() const {
  ByteBlock block;
  block.put(kUCKeySequenceDataIndexFormat);
  block.put16(sequences_.size());
  std::size_t end = kSequencesList + (sequences_.size() + 1) * 2;
  block.put16(end);
  for (const std::u16string& text : sequences_) block.put16(end += text.size() * 2);
  for (const std::u16string& text : sequences_) {
    for (const char16_t unit : text) block.put(unit);
  }
  return block;
}

/// Blocks in the order in which each makes known what the next must hold: tables bring up records,
/// records and terminators bring up sequences.
std::vector<std::uint8_t> Writer::layout() {
  constexpr std::size_t kHeadSize = kLayoutTypeList + kTypeEntrySize;
  ByteBlock blocks;
  std::array<std::size_t, 5> offsets{};
  const auto append = [&](std::size_t number, const ByteBlock& block) {
    offsets[number] = kHeadSize + blocks.size();
    blocks.append(block);
    blocks.align();
  };
  append(0, modifiers());
  append(1, tables(kHeadSize + blocks.size()));
  if (!records_.empty()) append(2, records(kHeadSize + blocks.size()));
  if (!tables_.deadKeys.empty()) append(3, terminators());
  if (!sequences_.empty()) append(4, sequences());

  ByteBlock layout;
  layout.put(kUCKeyLayoutHeaderFormat);
  layout.put16(1);
  layout.put32(0);
  layout.put32(1);
  layout.put32(0);
  layout.put32(std::numeric_limits<std::uint32_t>::max());
  for (const std::size_t offset : offsets) layout.put32(offset);
  layout.append(blocks);
  return layout.take();
}

}  // namespace

LayoutData writeLayout(const LayoutTables& tables) {
  return std::make_shared<const std::vector<std::uint8_t>>(Writer(tables).layout());
}

}  // namespace quorvane::keyboard
