#pragma once
// The candidates panel and the annotation beside it, drawn over the document's text.

#include "apps/desk/Canvas.h"
#include "apps/desk/DeskModel.h"
#include "apps/desk/DeskPlan.h"

namespace quorvane::desk {

/// `line`: the terminal's row with the text that is being completed.
void drawCandidates(Canvas& canvas, const DeskPlan& plan, const DeskModel& model, int line);

}  // namespace quorvane::desk
