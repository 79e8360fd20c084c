#include "src/session/QBIM_IMK_Suspension.h"

namespace quorvane {

void endSuspension(const ToolRec& record) {
  record.put(ToolCRecPtr_SessionMark, 0);
  record.put(ToolCRecPtr_SuspendCount, 0);
  record.put(ToolCRecPtr_SuspendTotal, 0);
}

}  // namespace quorvane
