#pragma once
// Random choices by a seed, the same everywhere, or by a fuzzer's bytes; and random key events made
// of them.

#include <cstdint>
#include <optional>
#include <random>
#include <string>

#include "platform/AppKitEvents.h"
#include "tests/support/Input.h"

namespace quorvane::model {

class Random {
 public:
  explicit Random(std::uint64_t seed) : generator_(seed) {}
  explicit Random(fuzz::Input& input) : input_(&input) {}
  std::uint32_t below(std::uint32_t n) {
    if (input_) return (n <= 0x100 ? input_->byte() : input_->half()) % n;
    return static_cast<std::uint32_t>((*generator_)() % n);
  }
  /// True in so many of a thousand cases; not where the bytes have come to their end.
  bool chance(std::uint32_t permille) { return below(1000) >= 1000 - permille; }
  std::uint32_t word() {
    return input_ ? input_->word() : static_cast<std::uint32_t>((*generator_)());
  }
  template <class Container>
  const auto& oneOf(const Container& container) {
    return *(std::begin(container) + below(static_cast<std::uint32_t>(std::size(container))));
  }

 private:
  fuzz::Input* input_ = nullptr;
  std::optional<std::mt19937_64> generator_;
};

/// What somebody is at: everything mixed, plain sentences, one endless word, or the keys of windows
/// and of smart characters; or also what no keyboard gives.
enum class Habit { Mixed, Sentences, OneWord, Picking, Anything };

/// Key down, key up or flags changed; any key with any modifiers, more or less often.
NSEvent randomKey(Random& random, Habit habit);
/// A text for a fix, of up to a dozen characters of all lengths.
std::u16string randomText(Random& random);

}  // namespace quorvane::model
