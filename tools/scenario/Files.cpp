// Statements about the user's files: folders in the application support folder, files in them with
// type, creator and a switch of their own, and the dates of folders.

#include "hosts/resources/UTCDates.h"
#include "tools/scenario/World.h"

namespace quorvane::scenario {
namespace {

constexpr FourCharCode kSwitch = "cswt"_4cc;
constexpr std::int64_t kFrom1970To2001 = 978'307'200;  // seconds

std::string pathInSupportFolder(World& world, const Argument& name) {
  return world.host.files.applicationSupportFolder + "/" + toBytes(name.text);
}

std::string existing(World& world, std::string path) {
  if (world.host.files.has(path)) return path;
  throw BadStatement("there is no " + path);
}
std::string newFile(World& world, const Argument& name) {
  return existing(world, world.folder) + "/" + toBytes(name.text);
}
std::string knownFile(World& world, const Argument& name) {
  return existing(world, newFile(world, name));
}

void enterFolder(World& world, const Arguments& is) {
  world.folder = pathInSupportFolder(world, is[0]);
  world.host.files.makeFolder(world.folder);
}
void renameFolder(World& world, const Arguments& is) {
  const std::string name = pathInSupportFolder(world, is[0]);
  world.host.files.rename(existing(world, world.folder), name);
  world.folder = name;
}
void removeFolder(World& world, const Arguments& /*is*/) {
  world.host.files.remove(existing(world, world.folder));
}
void dateFolder(World& world, const Arguments& is) {
  const auto seconds = static_cast<std::int64_t>(parseDate(is[0].word).count());
  world.host.files.setModificationDate(
      existing(world, world.folder),
      (seconds + kFrom1970To2001) * resources::kNanosecondsPerSecond);
}

void putFile(World& world, const Arguments& is) {
  const std::string path = newFile(world, is[0]);
  world.host.files.put(path, "");
  world.host.files.putResources(path, {is[1].u32(), is[2].u32()}, {});
}
void removeUserFile(World& world, const Arguments& is) {
  world.host.files.remove(knownFile(world, is[0]));
}
void setFileSwitch(World& world, const Arguments& is) {
  world.host.files.changeResources(knownFile(world, is[0]), [&](auto& /*info*/, auto& fork) {
    fork.at(kSwitch, 0).data = {static_cast<std::uint8_t>(is[1].number)};
  });
}

void expectSwitch(World& world, const Arguments& is) {
  const auto around =
      world.host.files.dataWithContentsOfFile(resources::appleDoublePath(knownFile(world, is[0])));
  const auto file = resources::readAppleDouble(around->bytes());
  const auto fork = resources::readResourceFork(file.value->content(resources::kResourceForkEntry));
  const auto* const found = fork.value->find(kSwitch, 0);
  if (found == nullptr || found->data.empty()) throw BadStatement("the file has no switch");
  world.expectNumber(is[1].number, found->data[0]);
}
void expectDate(World& world, const Arguments& is) {
  const std::int64_t date = world.host.files.modificationDate(existing(world, world.folder));
  world.expectNumber(static_cast<std::int64_t>(parseDate(is[0].word).count()),
                     date / resources::kNanosecondsPerSecond - kFrom1970To2001);
}

constexpr Pattern kFileStage[] = {
    {"folder TEXT", enterFolder},
    {"the folder is called TEXT", renameFolder},
    {"the folder goes", removeFolder},
    {"the folder is dated TEXT", dateFolder},
    {"file TEXT with type NUMBER and creator NUMBER", putFile},
    {"file TEXT goes", removeUserFile},
    {"switch of file TEXT is BYTE", setFileSwitch},
};

constexpr Pattern kFile[] = {
    {"expect switch of file TEXT is BYTE", expectSwitch},
    {"expect the folder is dated TEXT", expectDate},
};

}  // namespace

std::span<const Pattern> fileStagePatterns() { return kFileStage; }
std::span<const Pattern> filePatterns() { return kFile; }

}  // namespace quorvane::scenario
