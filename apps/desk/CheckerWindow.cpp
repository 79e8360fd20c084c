#include "apps/desk/CheckerWindow.h"

#include <utility>

#include "apps/Segment.h"
#include "src/bridge/Presence.h"
#include "tools/checker/PopupList.h"
#include "tools/checker/ToolRecord.h"
#include "tools/checker/WindowFile.h"

namespace quorvane::desk {
namespace {

using checker::At;

/// Top in the low half, left in the high.
NSPoint cornerIn(std::uint32_t packed) {
  return {static_cast<double>(static_cast<std::int16_t>(packed >> 16)),
          static_cast<double>(static_cast<std::int16_t>(packed))};
}

}  // namespace

CheckerWindow lookAtCheckerWindow(RunningSystem& system) {
  if (IsQUORVANEAPPRUNNING(system.instance()) == 0) return {};
  const Segment segment(system.host().platform().sharedMemory, checker::kToolKey);
  const checker::ToolRecord record(segment.words());
  CheckerWindow window{record.get(At::WindowOpen), {}, {}};
  if (record.get(At::AppInput) != 0) window.own = checker::readWindowFile(system.runtimeFolder());
  if (window.state != kPopupWindow) return window;
  auto list = checker::readPopupList(system.runtimeFolder());
  if (list) window.popup = {cornerIn(record.get(At::WindowTopLeft)), std::move(list->suggestions)};
  return window;
}

}  // namespace quorvane::desk
