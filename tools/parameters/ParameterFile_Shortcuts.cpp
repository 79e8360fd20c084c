#include "tools/parameters/ParameterFile.h"

namespace quorvane::parameters {
namespace {

using resources::Bytes;
using resources::ByteView;

constexpr FourCharCode kAllType = QORVPARAMMENUCMMDKEYRESTYPE;
constexpr FourCharCode kOwnType = QORVPARAMMENUKEYRESTYPE;
constexpr std::size_t kCountSize = 4;

ByteView bytesIn(const ResourceFork& file, FourCharCode type) {
  const auto* const resource = file.find(type, kParamsID);
  return resource == nullptr ? ByteView() : ByteView(resource->data);
}

Shortcuts read(ByteView bytes) {
  Shortcuts all;
  for (; bytes.size() >= sizeof(Shortcut); bytes = bytes.subspan(sizeof(Shortcut))) {
    all.push_back({bigEndianNumber<FourCharCode>(bytes),
                   bigEndianNumber<std::uint32_t>(bytes, offsetof(Shortcut, modifiers)),
                   bigEndianNumber<std::int16_t>(bytes, offsetof(Shortcut, keyCode))});
  }
  return all;
}

/// What nobody reads stays.
void write(std::span<std::uint8_t> record, const KeyShortcut& shortcut) {
  putBigEndian(record, offsetof(Shortcut, commandID), shortcut.command);
  putBigEndian(record, offsetof(Shortcut, modifiers), shortcut.modifiers);
  putBigEndian(record, offsetof(Shortcut, keyCode), shortcut.key);
}

void insert(Bytes& bytes, std::size_t at, std::size_t size) {
  bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at), size, 0);
}

/// Into the records from `at` to `end`. True: there is one more.
bool put(Bytes& bytes, std::size_t at, std::size_t end, const KeyShortcut& shortcut) {
  while (end - at >= sizeof(Shortcut) &&
         bigEndianNumber<FourCharCode>(bytes, at) != shortcut.command) {
    at += sizeof(Shortcut);
  }
  const bool isNew = end - at < sizeof(Shortcut);
  if (isNew) insert(bytes, at, sizeof(Shortcut));
  write(std::span(bytes).subspan(at, sizeof(Shortcut)), shortcut);
  return isNew;
}

std::size_t countAt(ByteView bytes, std::size_t at) {
  return bigEndianNumber<std::uint32_t>(bytes, at) & kCountMask;
}

/// The bits above stay.
void setCount(Bytes& bytes, std::size_t at, std::size_t count) {
  const auto above = bigEndianNumber<std::uint32_t>(bytes, at) & ~kCountMask;
  putBigEndian(bytes, at, above | static_cast<std::uint32_t>(count));
}

/// An application's, as far as it is there.
struct Block {
  FourCharCode signature;
  std::size_t at;
  std::size_t count;

  [[nodiscard]] std::size_t countAt() const { return at + offsetof(ApplicationBlock, count); }
  [[nodiscard]] std::size_t records() const { return at + sizeof(ApplicationBlock); }
  [[nodiscard]] std::size_t end() const { return records() + count * sizeof(Shortcut); }
};

Block blockAt(ByteView bytes, std::size_t at) {
  Block block{bigEndianNumber<FourCharCode>(bytes, at), at, 0};
  block.count = std::min(countAt(bytes, block.countAt()),
                         (bytes.size() - block.records()) / sizeof(Shortcut));
  return block;
}

std::vector<Block> blocksIn(ByteView bytes) {
  if (bytes.size() < kCountSize) return {};
  std::vector<Block> blocks;
  std::size_t at = kCountSize;
  for (std::size_t left = countAt(bytes, 0);
       left > 0 && bytes.size() - at >= sizeof(ApplicationBlock); --left) {
    blocks.push_back(blockAt(bytes, at));
    at = blocks.back().end();
  }
  return blocks;
}

/// Behind the last one, which then claims no more than it has.
Block addBlock(Bytes& bytes, FourCharCode signature) {
  const auto blocks = blocksIn(bytes);
  const std::size_t at = blocks.empty() ? kCountSize : blocks.back().end();
  if (!blocks.empty()) setCount(bytes, blocks.back().countAt(), blocks.back().count);
  setCount(bytes, 0, blocks.size() + 1);
  insert(bytes, at, sizeof(ApplicationBlock));
  putBigEndian(bytes, at, signature);
  return {signature, at, 0};
}

Block findOrAddBlock(Bytes& bytes, FourCharCode signature) {
  for (const Block& each : blocksIn(bytes)) {
    if (each.signature == signature) return each;
  }
  return addBlock(bytes, signature);
}

}  // namespace

Shortcuts shortcutsIn(const ResourceFork& file) { return read(bytesIn(file, kAllType)); }

std::vector<ApplicationShortcuts> applicationShortcutsIn(const ResourceFork& file) {
  const ByteView bytes = bytesIn(file, kOwnType);
  std::vector<ApplicationShortcuts> all;
  for (const Block& each : blocksIn(bytes)) {
    const std::size_t size = each.end() - each.records();
    all.push_back({each.signature, read(bytes.subspan(each.records(), size))});
  }
  return all;
}

void setShortcut(ResourceFork& file, const KeyShortcut& shortcut) {
  Bytes& bytes = file.at(kAllType, kParamsID).data;
  put(bytes, 0, bytes.size(), shortcut);
}

void setShortcut(ResourceFork& file, FourCharCode signature, const KeyShortcut& shortcut) {
  Bytes& bytes = file.at(kOwnType, kParamsID).data;
  bytes.resize(std::max(bytes.size(), kCountSize));
  const Block block = findOrAddBlock(bytes, signature);
  if (put(bytes, block.records(), block.end(), shortcut)) {
    setCount(bytes, block.countAt(), block.count + 1);
  }
}

bool forgetShortcuts(ResourceFork& file, FourCharCode signature) {
  const auto blocks = blocksIn(bytesIn(file, kOwnType));
  std::size_t left = blocks.size();
  for (auto each = blocks.rbegin(); each != blocks.rend(); ++each) {
    if (each->signature != signature) continue;
    Bytes& bytes = file.at(kOwnType, kParamsID).data;
    const auto start = bytes.begin();
    bytes.erase(start + static_cast<std::ptrdiff_t>(each->at),
                start + static_cast<std::ptrdiff_t>(each->end()));
    setCount(bytes, 0, --left);
  }
  return left != blocks.size();
}

}  // namespace quorvane::parameters
