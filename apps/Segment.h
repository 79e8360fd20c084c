#pragma once
// A shared segment of the main application, read as any other process reads it.

#include <cstdint>
#include <span>

#include "platform/SharedMemory.h"

namespace quorvane {

class Segment {
 public:
  /// Empty where there is none. `memory` outlives this.
  Segment(SharedMemory& memory, std::uint32_t key);
  ~Segment();
  Segment(const Segment&) = delete;
  Segment& operator=(const Segment&) = delete;

  [[nodiscard]] std::span<const std::uint8_t> bytes() const {
    return {static_cast<const std::uint8_t*>(address_), size_};
  }
  [[nodiscard]] std::span<std::uint32_t> words() const {
    return {static_cast<std::uint32_t*>(address_), size_ / sizeof(std::uint32_t)};
  }

 private:
  SharedMemory& memory_;
  void* address_ = nullptr;
  std::size_t size_ = 0;
};

}  // namespace quorvane
