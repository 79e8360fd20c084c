#pragma once
// A file of finished arrays, mapped and used as it lies. What it was made of is its key.
//
//     head          checksum from here to the body, layout, kind, sizes
//     directory     offset and size of each section
//     page sums     one for each page of the body
//     body          the sections, each from a page boundary on, the first of them the key
//
// At the opening the parts before the body are checked, and the key. A page of the body is checked
// when it is first asked for. So an opening costs next to nothing, and nothing unchecked is used.
// The file is replaced as a whole and never written in place; somebody who does that to a mapped
// one, or cuts it short, ends the process by a bus error.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/FileManager.h"
#include "platform/MacTypes.h"

namespace quorvane {

/// The snapshot isn't what was once written, or is another one: make it anew.
struct DamagedSnapshot : std::runtime_error {
  using runtime_error::runtime_error;
};

class Snapshot {
 public:
  static constexpr std::size_t kPageSize = 4096;

  /// Throws DamagedSnapshot where `file` isn't a snapshot of this kind and key.
  Snapshot(std::unique_ptr<FileData> file, FourCharCode kind, std::string_view key);

  /// All of section `index`, not yet checked.
  [[nodiscard]] std::span<const std::uint8_t> section(std::size_t index) const {
    if (index >= sections_.size()) throw DamagedSnapshot("a section is missing");
    return sections_[index];
  }
  /// To be asked for every part of a section before its use.
  void check(std::span<const std::uint8_t> part) const {
    if (part.empty()) return;
    const auto first = static_cast<std::size_t>(part.data() - body_.data()) / kPageSize;
    const auto last = static_cast<std::size_t>(&part.back() - body_.data()) / kPageSize;
    for (std::size_t page = first; page <= last; ++page) {
      if (!checked_[page]) checkPage(page);
    }
  }

 private:
  void checkPage(std::size_t page) const;

  std::unique_ptr<FileData> file_;
  std::span<const std::uint8_t> body_;
  std::span<const std::uint8_t> pageSums_;
  std::vector<std::span<const std::uint8_t>> sections_;
  mutable std::vector<std::uint8_t> checked_;  ///< of each page, 1 or 0
};

/// A snapshot that has yet to be written. The same input gives the same bytes.
class NewSnapshot {
 public:
  /// `sections` without the key; they must outlive this.
  NewSnapshot(FourCharCode kind, std::string_view key,
              std::span<const std::span<const std::uint8_t>> sections);

  /// One after the other.
  [[nodiscard]] const std::vector<std::span<const std::uint8_t>>& parts() const { return parts_; }
  /// The same in memory of its own.
  [[nodiscard]] std::unique_ptr<FileData> joined() const;

 private:
  std::string key_;
  std::vector<std::uint8_t> beforeBody_;
  std::vector<std::span<const std::uint8_t>> parts_;
};

/// The numbers of one section. The snapshot must outlive this.
template <class Number>
class Numbers {
  static_assert(std::is_trivially_copyable_v<Number>);

 public:
  Numbers(const Snapshot& snapshot, std::size_t section)
      : snapshot_(&snapshot), bytes_(snapshot.section(section)) {}

  [[nodiscard]] std::size_t size() const { return bytes_.size() / sizeof(Number); }
  [[nodiscard]] Number operator[](std::size_t index) const { return slice(index, 1).front(); }
  /// Throws DamagedSnapshot where that isn't whole, or lies outside.
  [[nodiscard]] std::span<const Number> slice(std::size_t first, std::size_t count) const {
    if (first > size() || count > size() - first) throw DamagedSnapshot("outside of a section");
    const auto part = bytes_.subspan(first * sizeof(Number), count * sizeof(Number));
    snapshot_->check(part);
    return {reinterpret_cast<const Number*>(part.data()), count};
  }

 private:
  const Snapshot* snapshot_;
  std::span<const std::uint8_t> bytes_;
};

/// The bytes of an array, for a new snapshot.
template <class Array>
std::span<const std::uint8_t> asBytes(const Array& array) {
  return {reinterpret_cast<const std::uint8_t*>(array.data()), array.size() * sizeof(array[0])};
}

/// Texts: one section of bytes, the next with the offset of each text and of the end.
class TextArray {
 public:
  TextArray(const Snapshot& snapshot, std::size_t section)
      : bytes_(snapshot, section), offsets_(snapshot, section + 1) {
    if (offsets_.size() == 0) throw DamagedSnapshot("texts without an end");
  }

  [[nodiscard]] std::size_t size() const { return offsets_.size() - 1; }
  [[nodiscard]] std::string_view operator[](std::size_t index) const {
    const auto offsets = offsets_.slice(index, 2);
    const std::uint32_t begin = offsets[0];
    const std::uint32_t end = offsets[1];
    if (begin > end) throw DamagedSnapshot("a text ends before it begins");
    const auto text = bytes_.slice(begin, end - begin);
    return {text.data(), text.size()};
  }
  /// The first text from `from` on for which `before` isn't true; it is for all that come earlier.
  /// `end` where there is none.
  template <class Before>
  [[nodiscard]] std::size_t partitionPoint(std::size_t from, std::size_t end, Before before) const {
    std::size_t count = end - from;
    while (count > 0) {
      const std::size_t half = count / 2;
      if (before((*this)[from + half])) {
        from += half + 1;
        count -= half + 1;
      } else {
        count = half;
      }
    }
    return from;
  }
  /// Where `text` is, given that the texts are in the order of their bytes.
  [[nodiscard]] std::optional<std::size_t> find(std::string_view text) const {
    const std::size_t index =
        partitionPoint(0, size(), [text](auto other) { return other < text; });
    if (index == size() || (*this)[index] != text) return std::nullopt;
    return index;
  }

 private:
  Numbers<char> bytes_;
  Numbers<std::uint32_t> offsets_;
};

}  // namespace quorvane
