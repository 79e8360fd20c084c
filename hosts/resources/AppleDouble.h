#pragma once
// AppleDouble version 2, RFC 1740: what a file has beside its data, in a file `._name` next to
// `name`. All numbers are big-endian.
//
//   0   magic 0x00051607 (4), version 0x00020000 (4), filler (16), count of entries (2)
//   26  for each entry: what it is (4), offset (4), length (4)
//       the entries

#include <array>
#include <string>

#include "hosts/resources/CheckedBytes.h"
#include "platform/MacTypes.h"

namespace quorvane::resources {

inline constexpr std::uint32_t kResourceForkEntry = 2;
inline constexpr std::uint32_t kFinderInfoEntry = 9;

/// The first words of the Finder info, which has 32 bytes and more behind them at times.
struct FinderInfo {
  FourCharCode fileType = 0;
  FourCharCode fileCreator = 0;
  bool operator==(const FinderInfo&) const = default;
};

struct AppleDouble {
  struct Entry {
    std::uint32_t id = 0;
    Bytes content;
    std::size_t offset = 0;  ///< where it was read; attributes behind the Finder info count on it
  };

  std::array<std::uint8_t, 16> filler{};
  std::vector<Entry> entries;

  /// Empty where there is no such entry.
  [[nodiscard]] ByteView content(std::uint32_t id) const;
  /// The first entry of that kind, made where there is none.
  Bytes& contentOf(std::uint32_t id);
  /// Zeros where there is none.
  [[nodiscard]] FinderInfo finderInfo() const;
  /// What else the entry holds stays.
  void setFinderInfo(FinderInfo info);
};

/// No bytes are a file without entries.
Outcome<AppleDouble> readAppleDouble(ByteView bytes);
/// Every entry stays at its offset as long as what lies before it leaves room, attributes always:
/// else this fails. The resource fork goes last.
Outcome<Bytes> writeAppleDouble(const AppleDouble& file);

/// Of a whole file; zeros where it can't be read.
FinderInfo finderInfoOf(ByteView file);

/// "folder/._name" of "folder/name".
std::string appleDoublePath(std::string_view path);
bool isAppleDoubleName(std::string_view name);

}  // namespace quorvane::resources
