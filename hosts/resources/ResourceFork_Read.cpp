#include "hosts/resources/ResourceFork.h"
#include "hosts/resources/ResourceFork_Layout.h"

namespace quorvane::resources {
namespace {

constexpr std::size_t kHeader = 16;
constexpr std::uint16_t kNoName = 0xFFFF;

struct Areas {
  ByteView data, map, types, names;
};

/// Data and map, which may come in either order.
Areas areasOf(ByteView fork) {
  constexpr std::string_view kShort = "the header is cut short";
  const std::size_t data = checkedNumber<std::uint32_t>(fork, 0, kShort);
  const std::size_t map = checkedNumber<std::uint32_t>(fork, 4, kShort);
  const std::size_t dataLength = checkedNumber<std::uint32_t>(fork, 8, kShort);
  const std::size_t mapLength = checkedNumber<std::uint32_t>(fork, 12, kShort);
  Areas areas;
  areas.data = checkedPart(fork, data, dataLength, "the data lie outside the fork");
  areas.map = checkedPart(fork, map, mapLength, "the map lies outside the fork");
  require(mapLength >= kMapHead, "the map is cut short");
  requireApart({{0, kHeader}, {data, data + dataLength}, {map, map + mapLength}},
               "header, data and map overlap");
  const std::size_t types = bigEndianNumber<std::uint16_t>(areas.map, 24);
  const std::size_t names = bigEndianNumber<std::uint16_t>(areas.map, 26);
  require(types >= kMapHead, "the type list lies inside the map's head");
  areas.types = checkedPart(areas.map, types, mapLength - std::min(types, mapLength),
                            "the type list lies outside the map");
  areas.names = checkedPart(areas.map, names, mapLength - std::min(names, mapLength),
                            "the name list lies outside the map");
  return areas;
}

/// What lies behind the header, as far as it belongs to no area.
void readReserved(ByteView bytes, const Areas& areas, ResourceFork& fork) {
  const auto startOf = [&](ByteView area) {
    return area.empty() ? bytes.size() : static_cast<std::size_t>(area.data() - bytes.data());
  };
  const std::size_t end =
      std::min({startOf(areas.data), startOf(areas.map), kHeader + ResourceFork::kReserved});
  std::ranges::copy(bytes.subspan(kHeader, end - kHeader), fork.reserved.begin());
}

struct TypeEntry {
  FourCharCode type = 0;
  ByteView references;
};

std::vector<TypeEntry> readTypes(const Areas& areas) {
  constexpr std::string_view kShort = "the type list is cut short";
  // One less than there are; none is therefore 65535.
  const auto count =
      static_cast<std::uint16_t>(checkedNumber<std::uint16_t>(areas.types, 0, kShort) + 1U);
  const ByteView list = checkedPart(areas.types, 2, count * kTypeEntry, kShort);
  std::vector<TypeEntry> entries;
  std::vector<Stretch> stretches{{0, 2 + list.size()}};
  for (std::size_t at = 0; at < list.size(); at += kTypeEntry) {
    const std::size_t length =
        (std::size_t{bigEndianNumber<std::uint16_t>(list, at + 4)} + 1) * kReference;
    const std::size_t offset = bigEndianNumber<std::uint16_t>(list, at + 6);
    entries.push_back(
        {bigEndianNumber<FourCharCode>(list, at),
         checkedPart(areas.types, offset, length, "a reference list lies outside the map")});
    stretches.emplace_back(offset, offset + length);
  }
  requireApart(std::move(stretches), "reference lists overlap");
  return entries;
}

std::optional<std::string> readName(ByteView names, std::uint16_t offset) {
  if (offset == kNoName) return {};
  constexpr std::string_view kOutside = "a name lies outside the map";
  const auto length = checkedNumber<std::uint8_t>(names, offset, kOutside);
  const ByteView name = checkedPart(names, offset + std::size_t{1}, length, kOutside);
  return std::string(name.begin(), name.end());
}

Resource readResource(const Areas& areas, FourCharCode type, ByteView reference,
                      std::vector<Stretch>& stretches) {
  constexpr std::string_view kOutside = "a resource lies outside the data";
  const std::size_t offset = bigEndianNumber<std::uint32_t>(reference, 4) & 0xFFFFFF;
  const std::size_t length = checkedNumber<std::uint32_t>(areas.data, offset, kOutside);
  const ByteView data = checkedPart(areas.data, offset + 4, length, kOutside);
  stretches.emplace_back(offset, offset + 4 + length);
  return {.type = type,
          .id = bigEndianNumber<std::int16_t>(reference, 0),
          .attributes = reference[4],
          .reserved = bigEndianNumber<std::uint32_t>(reference, 8),
          .name = readName(areas.names, bigEndianNumber<std::uint16_t>(reference, 2)),
          .data = {data.begin(), data.end()}};
}

/// Resources that share bytes are no resources: a small file could claim endless data.
std::vector<Resource> readResources(const Areas& areas) {
  std::vector<Resource> resources;
  std::vector<Stretch> stretches;
  std::size_t total = 0;
  for (const TypeEntry& entry : readTypes(areas)) {
    for (std::size_t at = 0; at < entry.references.size(); at += kReference) {
      const ByteView reference = entry.references.subspan(at, kReference);
      resources.push_back(readResource(areas, entry.type, reference, stretches));
      total += resources.back().data.size();
      require(total <= areas.data.size(), "resources overlap");
    }
  }
  requireApart(std::move(stretches), "resources overlap");
  return resources;
}

ResourceFork readFork(ByteView bytes) {
  require(bytes.size() <= kLargest, "the fork is larger than 16 MiB");
  ResourceFork fork;
  if (bytes.empty()) return fork;
  const Areas areas = areasOf(bytes);
  readReserved(bytes, areas, fork);
  std::ranges::copy(areas.map.subspan(kHeader, fork.mapReserved.size()), fork.mapReserved.begin());
  fork.attributes = bigEndianNumber<std::uint16_t>(areas.map, 22);
  fork.resources = readResources(areas);
  return fork;
}

}  // namespace

const Resource* ResourceFork::find(FourCharCode type, std::int16_t id) const {
  const auto found = std::ranges::find_if(
      resources, [&](const Resource& each) { return each.type == type && each.id == id; });
  return found == resources.end() ? nullptr : &*found;
}

Resource& ResourceFork::at(FourCharCode type, std::int16_t id) {
  if (const Resource* const found = find(type, id)) {
    return resources[static_cast<std::size_t>(found - resources.data())];
  }
  return resources.emplace_back(Resource{.type = type, .id = id, .name = {}, .data = {}});
}

Outcome<ResourceFork> readResourceFork(ByteView bytes) {
  return outcomeOf([&] { return readFork(bytes); });
}

}  // namespace quorvane::resources
