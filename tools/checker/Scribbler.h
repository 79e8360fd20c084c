#pragma once
// The hostile manner: now and then writes anything anywhere and sends anything. The same seed gives
// the same fits.

#include <cstdint>
#include <random>
#include <span>

#include "tools/checker/InputMethodPort.h"

namespace quorvane::checker {

class Scribbler {
 public:
  Scribbler(std::span<std::uint32_t> tool, std::span<std::uint8_t> text,
            std::span<std::uint8_t> command, InputMethodPort& port, std::uint32_t seed)
      : tool_(tool), text_(text), command_(command), port_(port), random_(seed) {}

  /// To be called at each look at the segments; a fit comes every eighth time or so.
  void maybe();

 private:
  std::uint32_t below(std::uint32_t limit);
  std::uint32_t anyNumber();
  void scribbleBytes(std::span<std::uint8_t> bytes);
  void lieAboutText();
  void sendGarbage();

  std::span<std::uint32_t> tool_;
  std::span<std::uint8_t> text_;
  std::span<std::uint8_t> command_;
  InputMethodPort& port_;
  std::mt19937 random_;
};

}  // namespace quorvane::checker
