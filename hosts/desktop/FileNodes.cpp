#include "hosts/desktop/FileNodes.h"

#include <fcntl.h>

#include <cstring>
#include <filesystem>
#include <utility>

#include "src/base/HostWords.h"

namespace quorvane::desktop {

std::optional<FileState> stateOfFile(int from, const char* path) {
  struct statx status {};
  if (statx(from, path, 0, STATX_BASIC_STATS | STATX_BTIME, &status) != 0) return {};
  return FileState{
      .identity = {status.stx_dev_major, status.stx_dev_minor, status.stx_ino,
                   status.stx_btime.tv_sec, status.stx_btime.tv_nsec},
      .isDirectory = S_ISDIR(status.stx_mode),
      .modificationNanoseconds =
          std::int64_t{status.stx_mtime.tv_sec} * 1'000'000'000 + status.stx_mtime.tv_nsec};
}

std::optional<FSRef> FileNodes::refOf(const std::string& path) {
  const auto state = stateOfFile(AT_FDCWD, path.c_str());
  if (!state) return {};
  return refTo(intern({state->identity, 0, path}));
}

FSRef FileNodes::refOf(const FSRef& folder, const std::string& name, const FileState& state) {
  return refTo(intern({state.identity, numberOf(folder), name}));
}

std::optional<FileNodes::Item> FileNodes::find(const FSRef& ref) { return find(numberOf(ref)); }

FileNodes::Number FileNodes::numberOf(const FSRef& ref) {
  return hostNumber<Number>(ref.hidden, 0);
}

FSRef FileNodes::refTo(Number number) {
  FSRef ref;
  std::memcpy(ref.hidden.data(), &number, sizeof number);
  return ref;
}

FileNodes::Node* FileNodes::nodeOf(Number number) {
  return number == 0 || number > nodes_.size() ? nullptr : &nodes_[number - 1];
}

std::string FileNodes::pathOf(Number number) {
  const Node& node = *nodeOf(number);
  return node.folder == 0 ? node.name : pathOf(node.folder).append("/").append(node.name);
}

std::optional<FileNodes::Item> FileNodes::find(Number number) {
  if (nodeOf(number) == nullptr) return {};
  if (auto item = lookWhereItWas(number)) return item;
  const auto folder = find(nodeOf(number)->folder);
  if (!folder) return {};
  if (auto item = lookWhereItWas(number)) return item;
  return lookInFolder(number, folder->path);
}

std::optional<FileNodes::Item> FileNodes::lookWhereItWas(Number number) {
  std::string path = pathOf(number);
  const auto state = stateOfFile(AT_FDCWD, path.c_str());
  if (!state || state->identity != nodeOf(number)->identity) return {};
  return Item{std::move(path), *state};
}

std::optional<FileNodes::Item> FileNodes::lookInFolder(Number number, const std::string& folder) {
  std::error_code error;
  for (std::filesystem::directory_iterator each(folder, error), end; !error && each != end;
       each.increment(error)) {
    const auto state = stateOfFile(AT_FDCWD, each->path().c_str());
    if (!state || state->identity != nodeOf(number)->identity) continue;
    nodeOf(number)->name = each->path().filename();
    return Item{each->path(), *state};
  }
  return {};
}

/// One that is known keeps its place as long as it is there: a second way to a folder would make
/// paths that have no end.
FileNodes::Number FileNodes::intern(Node node) {
  const auto [known, isNew] = numbers_.try_emplace(node.identity, nodes_.size() + 1);
  const Number number = known->second;
  if (isNew) {
    nodes_.push_back(std::move(node));
    return number;
  }
  Node& old = *nodeOf(number);
  const bool samePlace = old.folder == node.folder && old.name == node.name;
  if (!samePlace && !lookWhereItWas(number)) old = std::move(node);
  return number;
}

}  // namespace quorvane::desktop
