#include "tools/parameters/ParameterFile.h"

namespace quorvane::parameters {
namespace {

using resources::Bytes;
using resources::ByteView;

constexpr FourCharCode kAllType = "QKYS"_4cc;
constexpr FourCharCode kOwnType = "QKYX"_4cc;
constexpr std::int16_t kShortcutsID = 8888;
constexpr std::size_t kShortcutRecord = 12;
constexpr std::size_t kBlockHead = 24;
constexpr std::size_t kBlockUnused = 16;
constexpr std::uint32_t kCountBits = 0xFFFFFF;

ByteView bytesIn(const ResourceFork& file, FourCharCode type) {
  const auto* const resource = file.find(type, kShortcutsID);
  return resource == nullptr ? ByteView() : ByteView(resource->data);
}

Shortcuts read(ByteView bytes) {
  Shortcuts all;
  for (; bytes.size() >= kShortcutRecord; bytes = bytes.subspan(kShortcutRecord)) {
    all.push_back({bigEndianNumber<FourCharCode>(bytes),
                   bigEndianNumber<std::uint32_t>(bytes.subspan(4)),
                   bigEndianNumber<std::int16_t>(bytes.subspan(8)),
                   bigEndianNumber<std::uint16_t>(bytes.subspan(10))});
  }
  return all;
}

void write(Bytes& out, const Shortcuts& all) {
  for (const KeyShortcut& each : all) {
    resources::appendNumber(out, each.command);
    resources::appendNumber(out, each.modifiers);
    resources::appendNumber(out, each.key);
    resources::appendNumber(out, each.unused);
  }
}

void write(ResourceFork& file, const std::vector<ApplicationShortcuts>& all) {
  Bytes& out = file.at(kOwnType, kShortcutsID).data;
  out.clear();
  resources::appendNumber(out, static_cast<std::uint32_t>(all.size()));
  for (const ApplicationShortcuts& each : all) {
    resources::appendNumber(out, each.signature);
    resources::append(out, each.unused);
    resources::appendNumber(out, static_cast<std::uint32_t>(each.shortcuts.size()));
    write(out, each.shortcuts);
  }
}

void put(Shortcuts& all, const KeyShortcut& shortcut) {
  const auto known = std::ranges::find(all, shortcut.command, &KeyShortcut::command);
  if (known == all.end()) {
    all.push_back(shortcut);
  } else {
    *known = shortcut;
  }
}

}  // namespace

Shortcuts shortcutsIn(const ResourceFork& file) { return read(bytesIn(file, kAllType)); }

// What a count claims beyond the end isn't there.
std::vector<ApplicationShortcuts> applicationShortcutsIn(const ResourceFork& file) {
  ByteView bytes = bytesIn(file, kOwnType);
  if (bytes.size() < 4) return {};
  std::vector<ApplicationShortcuts> all;
  std::uint32_t left = bigEndianNumber<std::uint32_t>(bytes) & kCountBits;
  for (bytes = bytes.subspan(4); left > 0 && bytes.size() >= kBlockHead; --left) {
    ApplicationShortcuts block{.signature = bigEndianNumber<FourCharCode>(bytes)};
    std::ranges::copy(bytes.subspan(4, kBlockUnused), block.unused.begin());
    const std::uint32_t count = bigEndianNumber<std::uint32_t>(bytes.subspan(20)) & kCountBits;
    bytes = bytes.subspan(kBlockHead);
    const std::size_t size = std::min(count * kShortcutRecord, bytes.size());
    block.shortcuts = read(bytes.first(size));
    bytes = bytes.subspan(size);
    all.push_back(std::move(block));
  }
  return all;
}

void setShortcut(ResourceFork& file, const KeyShortcut& shortcut) {
  Shortcuts all = shortcutsIn(file);
  put(all, shortcut);
  Bytes& out = file.at(kAllType, kShortcutsID).data;
  out.clear();
  write(out, all);
}

void setShortcut(ResourceFork& file, FourCharCode signature, const KeyShortcut& shortcut) {
  auto all = applicationShortcutsIn(file);
  auto block = std::ranges::find(all, signature, &ApplicationShortcuts::signature);
  if (block == all.end()) {
    all.push_back({.signature = signature});
    block = std::prev(all.end());
  }
  put(block->shortcuts, shortcut);
  write(file, all);
}

bool forgetShortcuts(ResourceFork& file, FourCharCode signature) {
  auto all = applicationShortcutsIn(file);
  if (std::erase_if(all, [=](const auto& each) { return each.signature == signature; }) == 0) {
    return false;
  }
  write(file, all);
  return true;
}

}  // namespace quorvane::parameters
