#pragma once

namespace quorvane::bench {

/// How long `quorvane type` takes, where nothing runs, until the first corrected word stands in the
/// document, and which step takes how much of it: in an empty home, and once more in the same one.
/// Prints a line for each step; why not, where there is no program.
void printColdStart();

}  // namespace quorvane::bench
