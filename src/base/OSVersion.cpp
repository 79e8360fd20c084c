#include "src/base/OSVersion.h"

#include <array>
#include <cmath>

namespace quorvane {
namespace {

struct VersionRow {
  double appKitAtMost;
  std::uint16_t version;
};

constexpr std::array<VersionRow, 9> kVersions{{{1038, 106},
                                               {1138, 107},
                                               {1187, 108},
                                               {1265, 109},
                                               {1349, 1010},
                                               {1404, 1011},
                                               {1504, 1012},
                                               {1561, 1013},
                                               {1671, 1014}}};
constexpr std::uint16_t kNewest = 1015;

std::uint16_t versionOf(double appKitVersion) {
  const double whole = std::floor(appKitVersion);
  for (const VersionRow& row : kVersions) {
    if (whole <= row.appKitAtMost) return row.version;
  }
  return kNewest;
}

}  // namespace

std::uint16_t Get_OS_MAC_VERSION(Instance& instance) {
  auto& cached = instance.state<OSVersionState>().OS_MAC_VERSION;
  if (cached == 0) cached = versionOf(instance.platform().application.NSAppKitVersionNumber());
  return cached;
}

}  // namespace quorvane
