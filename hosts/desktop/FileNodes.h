#pragma once
// What an FSRef stands for on a disk: an item is known by device, inode and time of birth, and is
// looked for where it was last seen, under whatever name it has in that folder by now.

#include <sys/stat.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "platform/FileManager.h"

namespace quorvane::desktop {

/// device major and minor, inode, seconds and nanoseconds of birth where the file system knows it.
using FileIdentity =
    std::tuple<std::uint32_t, std::uint32_t, std::uint64_t, std::int64_t, std::uint32_t>;

struct FileState {
  FileIdentity identity;
  bool isDirectory = false;
  std::int64_t modificationNanoseconds = 0;
};

/// Of what the path leads to, from the folder `from`; none where that is nothing.
std::optional<FileState> stateOfFile(int from, const char* path);

class FileNodes {
 public:
  struct Item {
    std::string path;
    FileState state;
  };

  /// None where nothing is there.
  std::optional<FSRef> refOf(const std::string& path);
  /// An item just seen in a folder that has a reference.
  FSRef refOf(const FSRef& folder, const std::string& name, const FileState& state);
  /// None where it has gone.
  std::optional<Item> find(const FSRef& ref);

 private:
  using Number = std::uint64_t;  ///< from 1; 0: none
  struct Node {
    FileIdentity identity;
    Number folder = 0;  ///< 0: `name` is the whole path
    std::string name;
  };

  static Number numberOf(const FSRef& ref);
  static FSRef refTo(Number number);
  [[nodiscard]] Node* nodeOf(Number number);
  [[nodiscard]] std::string pathOf(Number number);
  std::optional<Item> find(Number number);
  std::optional<Item> lookWhereItWas(Number number);
  std::optional<Item> lookInFolder(Number number, const std::string& folder);
  Number intern(Node node);

  std::vector<Node> nodes_;
  std::map<FileIdentity, Number> numbers_;
};

}  // namespace quorvane::desktop
