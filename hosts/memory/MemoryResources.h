#pragma once
// Resource files in memory: the bundle's map of resources by type and number.

#include <map>
#include <utility>

#include "hosts/journal/Journal.h"
#include "platform/ResourceManager.h"

namespace quorvane::memory {

class MemoryResources : public ResourceManager {
 public:
  static constexpr std::int32_t kApplicationFile = 1;  ///< current at the start; has no resources

  explicit MemoryResources(Journal& journal) : journal_(journal) {}

  std::int32_t CFBundleOpenBundleResourceMap(std::string_view bundleIdentifier) override;
  void CFBundleCloseBundleResourceMap(std::string_view bundleIdentifier,
                                      std::int32_t refNum) override;
  std::int32_t CurResFile() override;
  void UseResFile(std::int32_t refNum) override;
  Handle Get1Resource(FourCharCode type, std::int16_t id) override;
  void DetachResource(const Handle& handle) override;

  /// What opening gives: a reference number, 0 or -1. The bundle has no map at first.
  std::int32_t openResult = 0;
  /// What the open map holds.
  std::map<std::pair<FourCharCode, std::int16_t>, std::vector<std::uint8_t>> bundle;

 private:
  Journal& journal_;
  std::int32_t current_ = kApplicationFile;
  std::int32_t open_ = 0;
  /// The same handle for the same resource while its file is open and it isn't detached.
  std::map<std::pair<FourCharCode, std::int16_t>, Handle> loaded_;
};

}  // namespace quorvane::memory
