#pragma once
// A law to judge by, for fuzz targets and tests that run as they do.

#include <string_view>

namespace quorvane::fuzz {

/// Ends the run with a finding that names the law, unless it holds.
void require(bool holds, std::string_view law);

}  // namespace quorvane::fuzz
