#include "src/menu/QBIM_WritingStyle_IMK.h"

#include <algorithm>
#include <span>
#include <utility>

#include "src/base/BigEndian.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/menu/InputMenu.h"

namespace quorvane {
namespace {

constexpr std::uint32_t kWritingStyleHead = "MWSt"_4cc;
constexpr std::uint32_t kWritingStyleBase = 1000;
constexpr std::uint32_t kMenuHandleSelector = "pGMh"_4cc;

/// The next Pascal string, cut where the block ends; `rest` begins behind it.
std::span<const std::uint8_t> takePascalString(std::span<const std::uint8_t>& rest) {
  const auto text = rest.subspan(1, std::min<std::size_t>(rest[0], rest.size() - 1));
  rest = rest.subspan(1 + text.size());
  return text;
}

}  // namespace

void QuorvaneWritingStyle::do_Init_WritingStyle_Menu() {
  if (!DictMenuString) DictMenuString = do_New_Get_Qorv_Menu_Handle(instance_, kMenuHandleSelector);
}

void QuorvaneWritingStyle::do_GetWritingStyleMenu(std::uint32_t base) {
  const std::uint32_t selected = ToolRec(instance_).get(ToolCRecPtr_WritingStyleMark);
  if (selected != Menu_Sel) markSelected(selected);
  do_Init_WritingStyle_Menu();
  if (const auto buffer = std::exchange(DictMenuString, std::nullopt)) build(*buffer, base);
}

void QuorvaneWritingStyle::markSelected(std::uint32_t position) {
  const NSMenu* const submenu = GetSubMenu_walkMenu(instance_, kWritingStyleHead, nullptr);
  if (submenu == nullptr) return;
  std::uint32_t at = 0;
  for (const auto& item : submenu->itemArray) {
    item->state = ++at == position ? NSOnState : NSOffState;
  }
}

/// The block may claim more items than it holds.
void QuorvaneWritingStyle::build(const MenuBuffer& buffer, std::uint32_t base) {
  Menu_Count = bigEndianNumber<std::uint32_t>(buffer, kMenuCountOffset);
  RemoveAll_SubMenu_Items(instance_, kWritingStyleHead);
  auto rest = std::span<const std::uint8_t>(buffer).subspan(kMenuItemsOffset);
  for (std::uint32_t k = 1; k <= Menu_Count && !rest.empty(); ++k) {
    const auto title = stringWithChar(instance_, takePascalString(rest));
    if (title) AddMenuItem_walkMenu(instance_, kWritingStyleHead, *title, base + k);
    EnableNSMenuItem(instance_, base + k, true);
  }
  const auto checked = bigEndianNumber<std::uint32_t>(buffer, kMenuCheckedOffset);
  if (checked == 0) return;
  Menu_Sel = checked;
  NS_CheckMark_MenuItem(instance_, kWritingStyleBase + checked, true);
}

QuorvaneWritingStyle& Get_QuorvaneWritingStyleController(Instance& instance) {
  return instance.state<QuorvaneWritingStyle>();
}

void Init_WritingStyle_Menu(Instance& instance) {
  Get_QuorvaneWritingStyleController(instance).do_Init_WritingStyle_Menu();
}

void GetWritingStyleMenu(Instance& instance, std::uint32_t /*ignored*/) {
  Get_QuorvaneWritingStyleController(instance).do_GetWritingStyleMenu(kWritingStyleBase);
}

}  // namespace quorvane
