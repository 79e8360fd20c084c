#include "src/completion/KeySort.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

namespace quorvane {
namespace {

constexpr int kDigitBits = 11;
constexpr std::size_t kDigits = std::size_t{1} << kDigitBits;

}  // namespace

void sortByKey(std::vector<Keyed>& items) {
  std::vector<Keyed> sorted(items.size());
  for (int shift = 0; shift < std::numeric_limits<std::uint64_t>::digits; shift += kDigitBits) {
    const auto digit = [shift](const Keyed& item) { return (item.key >> shift) % kDigits; };
    std::array<std::uint32_t, kDigits> places{};
    for (const Keyed& item : items) ++places[digit(item)];
    if (std::ranges::find(places, items.size()) != places.end()) continue;  // all have the same
    std::exclusive_scan(places.begin(), places.end(), places.begin(), std::uint32_t{0});
    for (const Keyed& item : items) sorted[places[digit(item)]++] = item;
    items.swap(sorted);
  }
}

}  // namespace quorvane
