#pragma once

#include <string_view>

namespace quorvane::fuzz {

/// Ends the run with a finding that names the law, unless it holds.
void require(bool holds, std::string_view law);

}  // namespace quorvane::fuzz
