#pragma once
// Resource Manager: typed data by number in a chain of resource files.

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/MacTypes.h"

namespace quorvane {

/// A block of memory that can be resized, locked, and owned by a resource.
struct HandleRecord {
  std::vector<std::uint8_t> content;
  bool hasContent = true;  ///< false: the handle's master pointer is null
  bool locked = false;
  bool isResource = false;
};
using Handle = std::shared_ptr<HandleRecord>;

class ResourceManager {
 public:
  virtual ~ResourceManager() = default;

  /// Reference number of the bundle's resource map; 0 or -1 where it isn't open.
  virtual std::int32_t CFBundleOpenBundleResourceMap(std::string_view bundleIdentifier) = 0;
  virtual void CFBundleCloseBundleResourceMap(std::string_view bundleIdentifier,
                                              std::int32_t refNum) = 0;
  virtual std::int32_t CurResFile() = 0;
  virtual void UseResFile(std::int32_t refNum) = 0;
  /// From the current file. Null where it hasn't got it.
  virtual Handle Get1Resource(FourCharCode type, std::int16_t id) = 0;
  /// Makes `handle` a plain block, independent of its file.
  virtual void DetachResource(const Handle& handle) = 0;
};

}  // namespace quorvane
