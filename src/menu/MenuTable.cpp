#include "src/menu/MenuTable.h"

#include <algorithm>

namespace quorvane {

std::int32_t Convert_CommandIDToTag(std::uint32_t commandID) {
  const auto* row = std::ranges::find(kMenuTable, commandID, &MenuRow::commandID);
  return row != kMenuTable.end() ? row->tag : static_cast<std::int32_t>(commandID);
}

std::uint32_t Convert_TagToCommandID(std::int32_t tag) {
  const auto* row = std::ranges::find(kMenuTable, tag, &MenuRow::tag);
  const bool known = row != kMenuTable.end() && row->converts == MenuConversion::BothWays;
  return known ? row->commandID : static_cast<std::uint32_t>(tag);
}

}  // namespace quorvane
