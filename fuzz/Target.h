#pragma once
// What every target has: one function that judges one input, and a law to judge it by.

#include <string_view>

#include "fuzz/Input.h"

namespace quorvane::fuzz {

/// Each target's own.
void run(Bytes bytes);

/// Ends the run with a finding that names the law, unless it holds.
void require(bool holds, std::string_view law);

}  // namespace quorvane::fuzz
