#pragma once
// A growing array of texts: their bytes in one string, and where each ends.

#include <cstdint>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

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

  [[nodiscard]] std::size_t size() const { return offsets_.size() - 1; }
  [[nodiscard]] std::string_view operator[](std::size_t index) const {
    return std::string_view(bytes_).substr(offsets_[index], offsets_[index + 1] - offsets_[index]);
  }
  [[nodiscard]] const std::string& bytes() const { return bytes_; }
  [[nodiscard]] const std::vector<std::uint32_t>& offsets() const { return offsets_; }
  /// The order of their bytes; among equal texts that of their adding.
  [[nodiscard]] std::vector<std::uint32_t> sorted() const;

 private:
  std::string bytes_;
  std::vector<std::uint32_t> offsets_{0};
};

}  // namespace quorvane
