#pragma once
// The drawing of the main application's own window.

#include "apps/desk/Canvas.h"
#include "apps/desk/DeskPlan.h"
#include "tools/checker/documents/WindowText.h"

namespace quorvane::desk {

void drawWindow(Canvas& canvas, const DeskPlan& plan, const checker::WindowText& window);

}  // namespace quorvane::desk
