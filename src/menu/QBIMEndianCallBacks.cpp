#include "src/menu/QBIMEndianCallBacks.h"

#include <algorithm>

#include "src/base/HostWords.h"
#include "src/menu/ParamsLayout.h"

namespace quorvane {
namespace {

using Data = std::span<std::uint8_t>;

template <class Number>
void swapNumber(Data data, std::size_t offset) {
  std::ranges::reverse(data.subspan(offset, sizeof(Number)));
}

void swapShortcut(Data record) {
  swapNumber<std::uint32_t>(record, offsetof(Shortcut, commandID));
  swapNumber<std::uint32_t>(record, offsetof(Shortcut, modifiers));
  swapNumber<std::int16_t>(record, offsetof(Shortcut, keyCode));
}

/// The count in native order, whichever it had.
std::uint32_t swapCount(Data data, std::size_t offset, bool currentlyNative) {
  const std::uint32_t before = hostWord32(data, offset);
  swapNumber<std::uint32_t>(data, offset);
  return currentlyNative ? before : hostWord32(data, offset);
}

/// Swaps a block with its shortcuts; the rest behind it, empty where the block claims more.
Data swapBlock(Data data, bool currentlyNative) {
  swapNumber<std::uint32_t>(data, offsetof(ApplicationBlock, signature));
  const std::size_t count = swapCount(data, offsetof(ApplicationBlock, count), currentlyNative);
  const Data records = data.subspan(sizeof(ApplicationBlock));
  const std::size_t size = std::min(count * sizeof(Shortcut), records.size());
  flipShortcuts(records.first(size));
  return records.subspan(size);
}

template <class Flip>
CoreEndianFlipProc procOf(Flip flip) {
  return [flip](FourCharCode /*domain*/, FourCharCode /*type*/, std::int16_t /*id*/, Data data,
                bool currentlyNative) {
    flip(data, currentlyNative);
    return noErr;
  };
}

}  // namespace

void flipShortcuts(Data data) {
  for (; data.size() >= sizeof(Shortcut); data = data.subspan(sizeof(Shortcut))) swapShortcut(data);
}

void flipApplicationBlocks(Data data, bool currentlyNative) {
  if (data.size() < sizeof(std::uint32_t)) return;
  std::uint32_t count = swapCount(data, 0, currentlyNative);
  data = data.subspan(sizeof(std::uint32_t));
  for (; count > 0 && data.size() >= sizeof(ApplicationBlock); --count) {
    data = swapBlock(data, currentlyNative);
  }
}

void flipAppSwitches(Data data) {
  for (; data.size() >= sizeof(AppSwitches); data = data.subspan(sizeof(AppSwitches))) {
    swapNumber<FourCharCode>(data, offsetof(AppSwitches, signature));
    swapNumber<std::uint32_t>(data, offsetof(AppSwitches, switches));
  }
}

void flipGlyphs(Data data) {
  for (; data.size() >= sizeof(Glyph); data = data.subspan(sizeof(Glyph))) {
    swapNumber<std::uint16_t>(data, offsetof(Glyph, first));
    swapNumber<std::uint16_t>(data, offsetof(Glyph, second));
  }
}

void Install_CoreEndianInstallFlippers(Instance& instance) {
  const auto install = [&](FourCharCode type, CoreEndianFlipProc flipper) {
    instance.platform().resourceManager.CoreEndianInstallFlipper(kCoreEndianResourceManagerDomain,
                                                                 type, std::move(flipper));
  };
  install(QORVPARAMMENUKEYRESTYPE, procOf(flipApplicationBlocks));
  install(QORVPARAMMENUCMMDKEYRESTYPE, procOf([](Data data, bool) { flipShortcuts(data); }));
  install(QORVPARAMCAPPKEYRESTYPE, procOf([](Data data, bool) { flipAppSwitches(data); }));
  install(kFlippedGlyphs, procOf([](Data data, bool) { flipGlyphs(data); }));
}

}  // namespace quorvane
