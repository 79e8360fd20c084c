#include "tools/parameters/disk/ParameterFileOnDisk.h"

#include <fstream>
#include <stdexcept>
#include <utility>

#include "hosts/desktop/AppleDoubleFile.h"

namespace quorvane::parameters {
namespace {

template <class Value>
Value valueOf(resources::Outcome<Value> outcome) {
  if (!outcome) throw std::runtime_error(std::string(kFile).append(": ").append(outcome.fault));
  return std::move(*outcome.value);
}

}  // namespace

void changeParameterFile(const std::filesystem::path& support,
                         const std::function<void(resources::ResourceFork&)>& change) {
  const auto file = support / kFolder / kFile;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::app).close();
  desktop::updateAppleDouble(file, [&](resources::AppleDouble& around) {
    resources::Bytes& fork = around.contentOf(resources::kResourceForkEntry);
    resources::ResourceFork inside = valueOf(resources::readResourceFork(fork));
    change(inside);
    fork = valueOf(resources::writeResourceFork(inside));
    around.setFinderInfo(kFinderInfo);
  });
}

}  // namespace quorvane::parameters
