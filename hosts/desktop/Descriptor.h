#pragma once
// Owner of a file descriptor.

#include <unistd.h>

#include <utility>

namespace quorvane::desktop {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }

  [[nodiscard]] int get() const { return number_; }
  [[nodiscard]] bool valid() const { return number_ >= 0; }
  void close() {
    if (valid()) ::close(std::exchange(number_, -1));
  }

 private:
  int number_ = -1;
};

}  // namespace quorvane::desktop
