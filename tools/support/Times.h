#pragma once
// How long something took, many times over.

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace quorvane {

class Times {
 public:
  template <class Action>
  auto measure(Action action) {
    const Since since(*this);
    return action();
  }

  /// "1000 times: median 31 us, 99 of 100 within 140 us, longest 612 us"
  [[nodiscard]] std::string summary() const {
    std::vector<Microseconds> sorted(all_);
    std::ranges::sort(sorted);
    const auto at = [&sorted](std::size_t hundredth) {
      const std::size_t last = sorted.size() - 1;
      return std::to_string(sorted[last * hundredth / 100].count()) + " us";
    };
    if (sorted.empty()) return "never";
    return std::to_string(sorted.size()) + " times: median " + at(50) + ", 99 of 100 within " +
           at(99) + ", longest " + at(100);
  }

 private:
  using Clock = std::chrono::steady_clock;
  using Microseconds = std::chrono::microseconds;

  struct Since {
    explicit Since(Times& owner) : times(owner) {}
    ~Since() {
      times.all_.push_back(std::chrono::duration_cast<Microseconds>(Clock::now() - start));
    }
    Since(const Since&) = delete;
    Since& operator=(const Since&) = delete;
    Times& times;
    Clock::time_point start = Clock::now();
  };

  std::vector<Microseconds> all_;
};

}  // namespace quorvane
