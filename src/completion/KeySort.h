#pragma once
// Sorting by numbers: digit after digit, from the lowest one on.

#include <cstdint>
#include <vector>

namespace quorvane {

struct Keyed {
  std::uint64_t key = 0;
  std::uint32_t index = 0;
};

/// What has equal keys stays in its order.
void sortByKey(std::vector<Keyed>& items);

}  // namespace quorvane
