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
  files.changeResources(path, [&](resources::FinderInfo& info, resources::ResourceFork& fork) {
    info = kFinderInfo;
    change(fork);
  });
}

}  // namespace quorvane::parameters
