#include "src/session/QBIM_IMK_Suspension.h"

#include "src/bridge/qorv_sharedmem.h"

namespace quorvane {

void endSuspension(Process& process) {
  PUT_TOOLCRECPTR(process, ToolCRecPtr_SessionMark, 0);
  PUT_TOOLCRECPTR(process, ToolCRecPtr_SuspendCount, 0);
  PUT_TOOLCRECPTR(process, ToolCRecPtr_SuspendTotal, 0);
}

}  // namespace quorvane
