#include <algorithm>
#include <optional>

#include "src/base/HostWords.h"
#include "src/bridge/Presence.h"
#include "src/menu/QBIM_IMK_Params.h"

namespace quorvane {
namespace {

using Records = std::span<const std::uint8_t>;

Records bytesOf(const Handle& handle) {
  if (GetHandleSize(handle) == 0) return {};
  return handle->content;
}

/// The shortcuts of the first block with the signature; none where there is no such block. What a
/// block claims beyond the resource's end isn't there.
std::optional<Records> recordsOf(Records blocks, FourCharCode signature) {
  std::uint32_t left = hostWord32(blocks, 0) & kCountMask;
  blocks = blocks.subspan(std::min(blocks.size(), sizeof left));
  for (; left > 0 && blocks.size() >= sizeof(ApplicationBlock); --left) {
    const auto block = recordAt<ApplicationBlock>(blocks, 0);
    blocks = blocks.subspan(sizeof block);
    const std::size_t claimed = (block.count & kCountMask) * sizeof(Shortcut);
    const Records records = blocks.first(std::min(claimed, blocks.size()));
    if (block.signature == signature) return records;
    blocks = blocks.subspan(records.size());
  }
  return {};
}

Records recordsForFront(Instance& instance) {
  const auto& state = instance.state<ParamsState>();
  const FourCharCode signature = FRONTPROCESSSIGNATURE(instance);
  if (signature != 0) {
    const auto own = recordsOf(bytesOf(state.QORVMENUKEYSXHAND), signature);
    if (own) return *own;
  }
  return bytesOf(state.QORVMENUKEYSHAND);
}

}  // namespace

const std::uint8_t* GetMenuKeysPtr(Instance& instance, std::uint32_t* countOut) {
  const Records records = recordsForFront(instance);
  if (countOut != nullptr)
    *countOut = static_cast<std::uint32_t>(records.size() / sizeof(Shortcut));
  return records.data();
}

}  // namespace quorvane
