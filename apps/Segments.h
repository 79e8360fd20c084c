#pragma once
// The family's shared segments, for those who clear them away.

#include <cstdint>
#include <vector>

namespace quorvane {

enum class InUse { Remove, Keep };

/// Removes those that lie at `keyOffset`. What is another user's or not of the size that they have
/// stays. The keys of those that were kept because somebody uses them are what it gives.
std::vector<std::uint32_t> removeSegments(std::uint32_t keyOffset, InUse inUse = InUse::Remove);

}  // namespace quorvane
