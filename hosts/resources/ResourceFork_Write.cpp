#include <map>

#include "hosts/resources/ResourceFork.h"
#include "hosts/resources/ResourceFork_Layout.h"

namespace quorvane::resources {
namespace {

constexpr std::size_t kDataStart = 256;
constexpr std::size_t kLargestOffset = 0xFFFF;

using Group = std::vector<const Resource*>;

/// Those of one type together.
std::vector<Group> groupsOf(const ResourceFork& fork) {
  std::vector<Group> groups;
  for (const Resource& each : fork.resources) {
    const auto group = std::ranges::find_if(
        groups, [&](const Group& known) { return known.front()->type == each.type; });
    if (group == groups.end()) {
      groups.push_back({&each});
    } else {
      group->push_back(&each);
    }
  }
  return groups;
}

/// What the map points to, as far as it has been written.
struct Lists {
  Bytes types, references, names, data;
  std::map<std::string_view, std::uint16_t> places;  ///< of the names
};

/// Equal names stand once: references may share one.
std::uint16_t addName(Lists& lists, const std::optional<std::string>& name) {
  if (!name) return 0xFFFF;
  const auto known = lists.places.find(*name);
  if (known != lists.places.end()) return known->second;
  require(name->size() <= 255, "a name has more than 255 bytes");
  require(lists.names.size() < kLargestOffset, "the names are too many");
  const auto offset = static_cast<std::uint16_t>(lists.names.size());
  lists.names.push_back(static_cast<std::uint8_t>(name->size()));
  lists.names.insert(lists.names.end(), name->begin(), name->end());
  return lists.places[*name] = offset;
}

void addResource(Lists& lists, const Resource& resource) {
  const std::size_t offset = lists.data.size();
  require(offset < kLargest && resource.data.size() < kLargest, "the fork is larger than 16 MiB");
  appendNumber(lists.references, resource.id);
  appendNumber(lists.references, addName(lists, resource.name));
  appendNumber(lists.references,
               static_cast<std::uint32_t>(std::uint32_t{resource.attributes} << 24 | offset));
  appendNumber(lists.references, resource.reserved);
  appendNumber(lists.data, static_cast<std::uint32_t>(resource.data.size()));
  append(lists.data, resource.data);
}

Lists listsOf(const ResourceFork& fork) {
  const std::vector<Group> groups = groupsOf(fork);
  const std::size_t typesSize = 2 + groups.size() * kTypeEntry;
  require(typesSize + fork.resources.size() * kReference <= kLargestOffset - kMapHead,
          "the resources are too many");
  Lists lists;
  appendNumber(lists.types, static_cast<std::uint16_t>(groups.size() - 1));
  for (const Group& group : groups) {
    appendNumber(lists.types, group.front()->type);
    appendNumber(lists.types, static_cast<std::uint16_t>(group.size() - 1));
    appendNumber(lists.types, static_cast<std::uint16_t>(typesSize + lists.references.size()));
    for (const Resource* each : group) addResource(lists, *each);
  }
  return lists;
}

Bytes headerOf(const Lists& lists) {
  const std::size_t listed = lists.types.size() + lists.references.size() + lists.names.size();
  Bytes header;
  for (const std::size_t number :
       {kDataStart, kDataStart + lists.data.size(), lists.data.size(), kMapHead + listed}) {
    appendNumber(header, static_cast<std::uint32_t>(number));
  }
  return header;
}

Bytes write(const ResourceFork& fork) {
  const Lists lists = listsOf(fork);
  const Bytes header = headerOf(lists);
  Bytes out = header;
  for (const ByteView part : {ByteView(fork.reserved), ByteView(lists.data), ByteView(header),
                              ByteView(fork.mapReserved)}) {
    append(out, part);
  }
  appendNumber(out, fork.attributes);
  appendNumber(out, static_cast<std::uint16_t>(kMapHead));
  appendNumber(out,
               static_cast<std::uint16_t>(kMapHead + lists.types.size() + lists.references.size()));
  for (const Bytes* part : {&lists.types, &lists.references, &lists.names}) append(out, *part);
  require(out.size() <= kLargest, "the fork is larger than 16 MiB");
  return out;
}

}  // namespace

Outcome<Bytes> writeResourceFork(const ResourceFork& fork) {
  return outcomeOf([&] { return write(fork); });
}

}  // namespace quorvane::resources
