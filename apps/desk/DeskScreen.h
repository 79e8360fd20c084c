#pragma once
// The drawing of the desk: a picture in cells comes of a plain record, nothing else.

#include "apps/desk/Canvas.h"
#include "apps/desk/DeskModel.h"
#include "apps/desk/DeskPlan.h"

namespace quorvane::desk {

/// A plan that doesn't fit gives a picture that says so.
Canvas drawDesk(const DeskPlan& plan, const DeskModel& model);

}  // namespace quorvane::desk
