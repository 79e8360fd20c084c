#include "src/completion/TextPile.h"

#include <algorithm>
#include <functional>
#include <numeric>

#include "src/completion/TextHead.h"

namespace quorvane {

std::vector<std::uint32_t> TextPile::sorted() const {
  std::vector<std::uint32_t> order(size());
  std::iota(order.begin(), order.end(), 0U);
  const auto isInOrder = [this](std::uint32_t a, std::uint32_t b) {
    return (*this)[a] < (*this)[b];
  };
  if (std::adjacent_find(order.begin(), order.end(), std::not_fn(isInOrder)) == order.end()) {
    return order;
  }
  std::vector<Keyed> items;
  items.reserve(size());
  for (const std::uint32_t index : order) items.push_back({headOf((*this)[index]), index});
  sortByKey(items);
  order.clear();
  for (auto run = items.begin(); run != items.end();) {
    const auto end =
        std::find_if(run, items.end(), [key = run->key](auto& i) { return i.key != key; });
    addRun({run, end}, order);
    run = end;
  }
  return order;
}

/// Texts of equal heads.
void TextPile::addRun(std::span<Keyed> run, std::vector<std::uint32_t>& order) const {
  const auto textOf = [this](const Keyed& item) { return (*this)[item.index]; };
  const auto textThenIndex = [&](const Keyed& item) { return std::pair(textOf(item), item.index); };
  if (run.size() > 1) std::ranges::sort(run, {}, textThenIndex);
  for (std::size_t i = 0; i < run.size(); ++i) {
    const bool isLast = i + 1 == run.size() || textOf(run[i]) != textOf(run[i + 1]);
    if (isLast) order.push_back(run[i].index);
  }
}

}  // namespace quorvane
