// A million random keys against a naive model; and lives beside a main application that comes, goes
// and writes anything.

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <iostream>

#include "fuzz/Target.h"
#include "tests/support/RandomWorld.h"
#include "tests/support/Typing.h"

namespace quorvane::model {
namespace {

constexpr std::uint64_t kKeysOfOneLife = 4'000;
#ifdef NDEBUG
constexpr std::uint64_t kKeys = 1'000'000;
#else
constexpr std::uint64_t kKeys = 100'000;
#endif

std::uint64_t numberFrom(const char* variable, std::uint64_t otherwise) {
  const char* text = std::getenv(variable);
  return text ? std::strtoull(text, nullptr, 10) : otherwise;
}

std::uint64_t firstSeed() { return numberFrom("QUORVANE_SEED", std::random_device{}()); }
std::uint64_t keysWanted() { return numberFrom("QUORVANE_KEYS", kKeys); }

TEST(RandomKeys, EachIsPassedOnOrTakenAsTheModelSays) {
  std::uint64_t seed = firstSeed();
  const std::uint64_t wanted = keysWanted();
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
  // Fewer keys need not reach every rule.
  EXPECT_TRUE(keys < 500'000 || reached.size() == 23) << "a rule was never reached";
}

std::uint64_t seed;
void nameSeed(int /*signal*/) { std::cerr << "QUORVANE_SEED=" << seed << std::endl; }

// The laws are those of the fuzzers; a breach ends the test program. `law` says how many keys an
// input has held.
template <class Law>
void judgeInputs(std::uint32_t mostBytes, const Law& law) {
  std::signal(SIGABRT, nameSeed);
  seed = firstSeed();
  for (std::uint64_t keys = 0; keys < keysWanted(); ++seed) {
    Random random(seed);
    std::vector<std::uint8_t> input(random.below(mostBytes));
    for (std::uint8_t& byte : input) byte = static_cast<std::uint8_t>(random.word());
    keys += law(input);
  }
}

TEST(RandomKeys, TheLawHoldsWhateverTheMainApplicationDoes) {
  constexpr std::uint64_t kAbout = 1'000;
  judgeInputs(6'000, [](fuzz::Bytes bytes) { return fuzz::run(bytes), kAbout; });
}

TEST(RandomKeys, NoneIsLostDoubledOrMovedBesideALiar) {
  constexpr std::uint64_t kEachTakesLong = 5;
  for (const bool completion : {false, true}) {
    judgeInputs(1'500, [=](fuzz::Bytes bytes) {
      return kEachTakesLong * fuzz::typeBesideALiar(bytes, completion);
    });
  }
}

}  // namespace
}  // namespace quorvane::model
