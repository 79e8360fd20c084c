#pragma once
// What every target has: one function that judges one input.

#include "tests/support/Input.h"
#include "tests/support/Law.h"

namespace quorvane::fuzz {

/// Each target's own.
void run(Bytes bytes);

}  // namespace quorvane::fuzz
