#pragma once
// Tells damaged bytes from whole ones. No protection against somebody who means harm.

#include <cstdint>
#include <span>

namespace quorvane {

/// Every change within one aligned 64-bit word changes the sum, and so, but for one time in 2^64,
/// does every other.
std::uint64_t checksum(std::span<const std::uint8_t> bytes);

}  // namespace quorvane
