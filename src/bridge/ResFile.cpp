#include "src/bridge/ResFile.h"

#include "src/base/Log.h"

namespace quorvane {

std::int32_t Do_FS_OpenResFile(Instance& instance, const FSRef& ref, std::int8_t permission) {
  ResourceManager& resources = instance.platform().resourceManager;
  std::int32_t refNum = -1;
  if (resources.FSOpenResourceFile(ref, permission, refNum) != noErr) {
    Log(instance, "FSOpenResourceFile failed - Resort to FSOpenResFile");
    refNum = resources.FSOpenResFile(ref, permission);
  }
  if (refNum != -1) resources.UseResFile(refNum);
  return refNum;
}

}  // namespace quorvane
