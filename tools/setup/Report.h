#pragma once

#include <string>
#include <vector>

namespace quorvane::setup {

/// What a setup tells, a line each.
struct Report {
  std::vector<std::string> changes;
  std::vector<std::string> problems;
};

}  // namespace quorvane::setup
