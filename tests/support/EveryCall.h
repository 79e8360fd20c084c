#pragma once
// The world changes before each single call that the input method makes on the platform.

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace quorvane::test {

/// On a stage of its own each time, which `make` makes: `step` with `change` before its first call,
/// then before the `stride`-th one behind that, and so on to its last; then `check`. All get the
/// stage and the number of the call. Ends at the first failure.
template <class Make, class Change, class Step, class Check>
void atEveryCall(std::uint64_t first, std::uint64_t stride, const Make& make, const Change& change,
                 const Step& step, const Check& check) {
  bool came = true;
  for (std::uint64_t call = first; came && !testing::Test::HasFailure(); call += stride) {
    SCOPED_TRACE("before call " + std::to_string(call));
    came = false;
    const auto stage = make();
    stage->host.journal.beforeCall(call, [&] {
      came = true;
      change(*stage, call);
    });
    step(*stage, call);
    stage->host.journal.beforeCall(0, {});
    if (came) check(*stage, call);
  }
  EXPECT_FALSE(came) << "stopped early";
}

}  // namespace quorvane::test
