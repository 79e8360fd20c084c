#pragma once
// A stable sort that any comparison may be given to, one that is no order included: every element
// is kept once, and the same input gives the same output. std::stable_sort promises neither.

#include <algorithm>
#include <utility>
#include <vector>

namespace quorvane {

/// `goesFirst(later, earlier)`: does the later element pass the earlier one?
template <class Element, class GoesFirst>
void mergeSort(std::vector<Element>& elements, GoesFirst goesFirst) {
  std::vector<Element> merged(elements.size());
  for (std::size_t width = 1; width < elements.size(); width *= 2) {
    for (std::size_t start = 0; start < elements.size(); start += 2 * width) {
      const std::size_t middle = std::min(start + width, elements.size());
      const std::size_t end = std::min(start + 2 * width, elements.size());
      std::size_t left = start;
      std::size_t right = middle;
      for (std::size_t to = start; to < end; ++to) {
        const bool takeRight =
            left == middle || (right < end && goesFirst(elements[right], elements[left]));
        merged[to] = std::move(elements[takeRight ? right++ : left++]);
      }
    }
    elements.swap(merged);
  }
}

}  // namespace quorvane
