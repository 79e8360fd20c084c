#pragma once
// The classic resource fork: data by type and number, with attributes and names. The format is that
// of "Inside Macintosh: More Macintosh Toolbox", chapter 1. All numbers are big-endian.
//
//   header     16   offset of data, offset of map, length of data, length of map
//   reserved  240   the system's and the application's own
//   data            for each resource: length (4), bytes
//   map        28   copy of the header (16), next map (4), file (2), attributes (2),
//                   offset of types (2), offset of names (2), both from the map's start
//   types           count - 1 (2); for each: type (4), count - 1 (2), offset of its references (2)
//   references      for each resource: number (2), offset of name or -1 (2), attributes (1),
//                   offset of data (3), reserved (4)
//   names           Pascal strings

#include <array>
#include <string>

#include "hosts/resources/CheckedBytes.h"
#include "platform/MacTypes.h"

namespace quorvane::resources {

inline constexpr std::uint16_t mapReadOnly = 0x80;  ///< of a fork
inline constexpr std::uint8_t resProtected = 8;     ///< of a resource

struct Resource {
  FourCharCode type = 0;
  std::int16_t id = 0;
  std::uint8_t attributes = 0;
  std::uint32_t reserved = 0;       ///< kept as it was read
  std::optional<std::string> name;  ///< Mac OS Roman, at most 255 bytes
  Bytes data;
  bool operator==(const Resource&) const = default;
};

struct ResourceFork {
  static constexpr std::size_t kReserved = 240;

  std::array<std::uint8_t, kReserved> reserved{};  ///< kept as it was read
  std::array<std::uint8_t, 6> mapReserved{};       ///< next map and file, kept too
  std::uint16_t attributes = 0;
  std::vector<Resource> resources;  ///< in the order of the map
  bool operator==(const ResourceFork&) const = default;

  /// The first one of type and number; null where there is none.
  [[nodiscard]] const Resource* find(FourCharCode type, std::int16_t id) const;
  /// The same, made where there is none.
  Resource& at(FourCharCode type, std::int16_t id);
};

/// No bytes are a fork without resources.
Outcome<ResourceFork> readResourceFork(ByteView bytes);
/// All that reading gives, in a layout of its own: those of one type stand together, in the order
/// in which the types first come. Fails where a limit of the format is passed.
Outcome<Bytes> writeResourceFork(const ResourceFork& fork);

}  // namespace quorvane::resources
