#include "apps/UserParameters.h"

#include <iostream>
#include <stdexcept>
#include <string>

#include "tools/parameters/disk/ParameterFileOnDisk.h"

namespace quorvane {
namespace {

std::vector<std::filesystem::path> prepare(const std::filesystem::path& support) {
  try {
    return parameters::prepareParameterFile(support);
  } catch (const std::exception& error) {
    throw std::runtime_error(std::string("the settings can't be used: ") + error.what() +
                             "; set QUORVANE_DATA_DIR to a folder that can be written");
  }
}

}  // namespace

void prepareUserParameters(const std::filesystem::path& support) {
  for (const std::filesystem::path& aside : prepare(support)) {
    std::cerr << "quorvane: the settings were damaged and are made anew; the old file is now "
              << aside.string() << '\n';
  }
}

}  // namespace quorvane
