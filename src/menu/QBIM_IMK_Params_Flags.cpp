#include <optional>

#include "src/bridge/ResFile.h"
#include "src/menu/QBIM_IMK_Params.h"

namespace quorvane {
namespace {

std::optional<std::uint8_t> flagInFile(Instance& instance, FourCharCode type, std::uint8_t index) {
  const CurrentResFile file(instance, Open_Params_ResourceFile);
  if (!file) return {};
  const Handle flags = instance.platform().resourceManager.Get1Resource(type, kParamsID);
  if (index >= GetHandleSize(flags)) return {};
  return flags->content[index];
}

}  // namespace

std::uint8_t Get_GlobalAutoCompleteFlag(Instance& instance, std::size_t index) {
  return flagInFile(instance, kAutoCompleteFlags, static_cast<std::uint8_t>(index)).value_or(0);
}

std::uint8_t Get_GlobalPencilMenuFlag(Instance& instance) {
  auto& flag = instance.state<ParamsState>().Global_PencilMenuFlag;
  flag = flagInFile(instance, kPencilMenuFlag, 0).value_or(flag);
  return flag;
}

void Set_FlagMenuActivationFlag(Instance& instance, std::uint8_t flag) {
  const CurrentResFile file(instance, Open_Params_ResourceFile);
  if (!file) return;
  const Handle flags = getOrMakeResource(instance, kMenuActivationFlag, kParamsID, sizeof flag);
  if (GetHandleSize(flags) == 0) return;
  flags->content[0] = flag;
  Write_Changed_Resource(instance, flags);
}

}  // namespace quorvane
