#include "src/completion/TextPile.h"

#include <algorithm>
#include <numeric>

#include "src/completion/TextHead.h"

namespace quorvane {
namespace {

struct Item {
  std::uint64_t head;
  std::uint32_t index;
};

}  // namespace

std::vector<std::uint32_t> TextPile::sorted() const {
  std::vector<std::uint32_t> order(size());
  std::iota(order.begin(), order.end(), 0U);
  const auto before = [this](std::uint32_t a, std::uint32_t b) { return (*this)[a] < (*this)[b]; };
  if (std::is_sorted(order.begin(), order.end(), before)) return order;
  std::vector<Item> items;
  items.reserve(size());
  for (const std::uint32_t index : order) items.push_back({headOf((*this)[index]), index});
  std::sort(items.begin(), items.end(), [this](const Item& a, const Item& b) {
    if (a.head != b.head) return a.head < b.head;
    const int compared = (*this)[a.index].compare((*this)[b.index]);
    return compared != 0 ? compared < 0 : a.index < b.index;
  });
  std::ranges::transform(items, order.begin(), &Item::index);
  return order;
}

}  // namespace quorvane
