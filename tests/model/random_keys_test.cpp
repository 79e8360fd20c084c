// A million random keys against a naive model, and faults that it must notice.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

#include "tests/model/RandomWorld.h"

namespace quorvane::model {
namespace {

constexpr std::uint64_t kKeysOfOneLife = 10'000;
#ifdef NDEBUG
constexpr std::uint64_t kKeys = 1'000'000;
#else
constexpr std::uint64_t kKeys = 100'000;
#endif

std::uint64_t numberFrom(const char* variable, std::uint64_t otherwise) {
  const char* text = std::getenv(variable);
  return text ? std::strtoull(text, nullptr, 10) : otherwise;
}

TEST(RandomKeys, EachIsPassedOnOrNamedExactlyOnceAndInOrder) {
  std::uint64_t seed = numberFrom("QUORVANE_SEED", std::random_device{}());
  const std::uint64_t wanted = numberFrom("QUORVANE_KEYS", kKeys);
  std::uint64_t keys = 0;
  std::map<std::string, int> reached;
  for (; keys < wanted; ++seed) {
    RandomWorld world(seed);
    world.run(std::min(kKeysOfOneLife, wanted - keys));
    keys += world.keys();
    ASSERT_EQ(world.breach(), "") << "QUORVANE_SEED=" << seed;
    for (const auto& [what, times] : world.reached()) reached[what] += times;
  }
  std::cout << keys << " keys";
  for (const auto& [what, times] : reached) std::cout << ", " << times << ' ' << what;
  std::cout << '\n';
  if (keys < 500'000) return;  // too few to reach everything
  for (const char* what : {"scans", "fixes landed", "counts refused", "texts taken back",
                           "impossible texts", "full sessions"}) {
    EXPECT_GT(reached[what], 0) << what;
  }
}

TEST(RandomKeys, APlantedFaultIsNoticed) {
  for (const Fault fault : {Fault::Lost, Fault::Doubled, Fault::HandledTwice, Fault::Swapped}) {
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
      RandomWorld world(seed, fault);
      world.run(5'000);
      EXPECT_NE(world.breach(), "") << "fault " << static_cast<int>(fault) << ", seed " << seed;
    }
  }
}

}  // namespace
}  // namespace quorvane::model
