// Every scenario file is a test.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tools/scenario/Scenario.h"

namespace quorvane {
namespace {

const std::filesystem::path kFolder = std::filesystem::path(QUORVANE_SOURCE_DIR) / "scenarios";

std::vector<std::string> scenarioNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
    if (entry.path().extension() == ".txt") names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string testName(const testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

class Scenarios : public testing::TestWithParam<std::string> {};

TEST_P(Scenarios, Holds) {
  std::ostringstream out;
  const std::string path = (kFolder / (GetParam() + ".txt")).string();
  EXPECT_EQ(replayFiles({path}, out), scenario::kHolds) << out.str();
}

INSTANTIATE_TEST_SUITE_P(Files, Scenarios, testing::ValuesIn(scenarioNames()), testName);

}  // namespace
}  // namespace quorvane
