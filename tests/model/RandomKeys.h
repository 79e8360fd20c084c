#pragma once
// Random numbers from a seed, the same everywhere, and random key events made of them.

#include <cstdint>
#include <random>
#include <string>

#include "platform/AppKitEvents.h"

namespace quorvane::model {

class Random {
 public:
  explicit Random(std::uint64_t seed) : generator_(seed) {}
  std::uint32_t below(std::uint32_t n) { return static_cast<std::uint32_t>(generator_() % n); }
  /// True in so many of a thousand cases.
  bool chance(std::uint32_t permille) { return below(1000) < permille; }
  std::uint32_t word() { return static_cast<std::uint32_t>(generator_()); }
  template <class Container>
  const auto& oneOf(const Container& container) {
    return *(std::begin(container) + below(static_cast<std::uint32_t>(std::size(container))));
  }

 private:
  std::mt19937_64 generator_;
};

/// What somebody is at: everything mixed, plain sentences, one endless word, or the keys of windows
/// and of smart characters.
enum class Habit { Mixed, Sentences, OneWord, Picking };

/// Key down, key up or flags changed; any key with any modifiers, more or less often.
NSEvent randomKey(Random& random, Habit habit);
/// A text for a fix, of up to a dozen characters of all lengths.
std::u16string randomText(Random& random);

}  // namespace quorvane::model
