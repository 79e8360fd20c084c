#pragma once
// Tables made from files, each kept in a snapshot file among the caches until one of the files is
// another one than it was.

#include <optional>
#include <string>
#include <utility>

#include "platform/FileManager.h"
#include "src/completion/Cached.h"
#include "src/completion/Snapshot.h"

namespace quorvane {

/// A new table. `sound`: worth keeping, because no file was there but couldn't be read.
template <class NewTable>
struct Made {
  NewTable table;
  bool sound = true;
};

/// Tells one state of a file from every other.
inline std::string stateOfFile(FileManager& files, const std::optional<std::string>& path) {
  if (!path) return "none\n";
  const auto attributes = files.attributesOfItemAtPath(*path);
  if (!attributes) return *path + " missing\n";
  return *path + " " + std::to_string(attributes->size) + " " +
         std::to_string(attributes->modificationNanoseconds) + " " +
         std::to_string(attributes->systemFileNumber) + "\n";
}

/// The table in the snapshot at `path`, if it was made of what `key` says and is whole.
template <class Table>
std::optional<Table> openSnapshot(FileManager& files, const std::string& path,
                                  const std::string& key) {
  auto file = files.dataWithContentsOfMappedFile(path);
  if (file == nullptr) return std::nullopt;
  try {
    return Table(std::move(file), key);
  } catch (const DamagedSnapshot&) {
    return std::nullopt;
  }
}

/// A table out of the snapshot called `name` among the caches. What `make` makes is written there
/// first where it must be; where it can't be written it stays in memory. If the snapshot proves
/// damaged later, a table is made of the files as they are then, and the next start makes a
/// snapshot again.
template <class Table, class Make>
Cached<Table> throughSnapshot(FileManager& files, const std::string& name, const std::string& key,
                              Make make) {
  const std::string path = files.cachesDirectory() + "/" + name + ".snapshot";
  const auto makeAnew = [&files, path, key, make] {
    files.writeToFile(path, {});
    const auto made = make();
    return Table(NewSnapshot(made.table.kKind, key, made.table.sections()).joined(), key);
  };
  if (auto table = openSnapshot<Table>(files, path, key)) return {*std::move(table), makeAnew};
  const auto made = make();
  const NewSnapshot snapshot(made.table.kKind, key, made.table.sections());
  if (made.sound) files.writeToFile(path, snapshot.parts());
  if (auto table = openSnapshot<Table>(files, path, key)) return {*std::move(table), makeAnew};
  return {Table(snapshot.joined(), key), makeAnew};
}

}  // namespace quorvane
