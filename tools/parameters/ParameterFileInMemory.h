#pragma once
// The parameter file of a memory host.

#include "hosts/memory/MemoryFiles.h"
#include "tools/parameters/ParameterFile.h"

namespace quorvane::parameters {

inline std::string pathOfParameterFile(const memory::MemoryFileManager& files) {
  return std::string(files.applicationSupportFolder)
      .append("/")
      .append(kFolder)
      .append("/")
      .append(kFile);
}

/// Changes the file, made where there is none; one that can't be read is made anew.
template <class Change>
void changeParameterFile(memory::MemoryFileManager& files, const Change& change) {
  const std::string path = pathOfParameterFile(files);
  if (!files.has(path)) files.put(path, {});
  const auto around = files.dataWithContentsOfFile(resources::appleDoublePath(path));
  const auto file =
      resources::readAppleDouble(around == nullptr ? resources::ByteView() : around->bytes());
  auto fork = resources::readResourceFork(file ? file.value->content(resources::kResourceForkEntry)
                                               : resources::ByteView());
  if (!fork) fork.value.emplace();
  change(*fork.value);
  files.putResources(path, kFinderInfo, *fork.value);
}

}  // namespace quorvane::parameters
