#pragma once
// A growing array of texts: their bytes in one string, and where each ends.

#include <cstdint>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "src/completion/KeySort.h"

namespace quorvane {

class TextPile {
 public:
  void add(std::string_view text) {
    bytes_.append(text);
    if (bytes_.size() > std::numeric_limits<std::uint32_t>::max()) {
      throw std::length_error("more than 4 GiB of words");
    }
    offsets_.push_back(static_cast<std::uint32_t>(bytes_.size()));
  }

  /// For texts of so many bytes in all. Memory that isn't used in the end is none.
  void reserveBytes(std::size_t bytes) { bytes_.reserve(bytes); }

  [[nodiscard]] std::size_t size() const { return offsets_.size() - 1; }
  [[nodiscard]] std::string_view operator[](std::size_t index) const {
    return std::string_view(bytes_).substr(offsets_[index], offsets_[index + 1] - offsets_[index]);
  }
  [[nodiscard]] const std::string& bytes() const { return bytes_; }
  [[nodiscard]] const std::vector<std::uint32_t>& offsets() const { return offsets_; }
  /// In the order of their bytes; of equal texts only the last one.
  [[nodiscard]] std::vector<std::uint32_t> sorted() const;

 private:
  void addRun(std::span<Keyed> run, std::vector<std::uint32_t>& order) const;

  std::string bytes_;
  std::vector<std::uint32_t> offsets_{0};
};

}  // namespace quorvane
