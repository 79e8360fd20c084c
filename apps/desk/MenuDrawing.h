#pragma once
// Open menus, drawn over everything else: the first one hangs at the top left, each submenu beside
// its head.

#include <vector>

#include "apps/desk/Canvas.h"
#include "apps/desk/DeskPlan.h"
#include "apps/desk/MenuView.h"

namespace quorvane::desk {

void drawMenus(Canvas& canvas, const DeskPlan& plan, const std::vector<MenuView>& menus);

}  // namespace quorvane::desk
