#pragma once
// Between the byte order of the parameter file and the native one. These are all the fields that
// are numbers; bytes that they leave alone stay as they are in the file.

#include "src/base/Instance.h"

namespace quorvane {

void Install_CoreEndianInstallFlippers(Instance& instance);

// Swap in place; `currentlyNative`: into the file's order. What doesn't hold a whole record at the
// end is left alone.
void flipShortcuts(std::span<std::uint8_t> data);
void flipApplicationBlocks(std::span<std::uint8_t> data, bool currentlyNative);
void flipAppSwitches(std::span<std::uint8_t> data);
void flipGlyphs(std::span<std::uint8_t> data);

}  // namespace quorvane
