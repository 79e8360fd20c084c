#include "tools/applications/ApplicationFolder.h"

#include "hosts/desktop/ApplicationPackage.h"
#include "tools/applications/Companion.h"

namespace quorvane::applications {
namespace {

constexpr const char* kProgram = "quorvane";

}  // namespace

std::filesystem::path mainApplicationIn(const std::filesystem::path& applications) {
  return applications / "Quorvane ARC7 X" / "Quorvane.app";
}

void putStandIn(const std::filesystem::path& applications,
                const std::vector<std::string>& arguments) {
  desktop::writeApplicationPackage(
      {mainApplicationIn(applications), "QVPX"_4cc, {kProgram, arguments}});
}

void putCompanions(const std::filesystem::path& bundle) {
  for (const Companion& companion : kCompanions) {
    desktop::writeApplicationPackage({bundle / "SharedSupport" / companion.package,
                                      companion.signature,
                                      {kProgram, {"companion", companion.word}}});
  }
}

}  // namespace quorvane::applications
