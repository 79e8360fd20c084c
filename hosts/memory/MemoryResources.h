#pragma once
// Resource files in memory: those of MemoryFileManager, which are no platform calls either, and the
// bundle's map of resources by type and number.

#include <map>
#include <utility>

#include "hosts/journal/Journal.h"
#include "hosts/resources/ResourceFiles.h"

namespace quorvane::memory {

class MemoryResources : public resources::ResourceFiles {
 public:
  MemoryResources(Journal& journal, resources::ForkStore& store)
      : ResourceFiles(store), journal_(journal) {}

  std::int32_t CFBundleOpenBundleResourceMap(std::string_view bundleIdentifier) override;
  void CFBundleCloseBundleResourceMap(std::string_view bundleIdentifier,
                                      std::int32_t refNum) override;

  /// Where it isn't positive, this is what opening the bundle's map gives. It has no map at first.
  std::int32_t openResult = 0;
  /// What the open map holds.
  std::map<std::pair<FourCharCode, std::int16_t>, std::vector<std::uint8_t>> bundle;

 private:
  Journal& journal_;
};

}  // namespace quorvane::memory
