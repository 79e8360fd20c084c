#pragma once
// Resource Manager: typed data by number in resource files, of which one is current. What it gives
// is in native byte order where a flipper is installed for the type.

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "platform/FileManager.h"
#include "platform/MacTypes.h"

namespace quorvane {

inline constexpr OSStatus resNotFound = -192;
inline constexpr OSStatus resFNotFound = -193;
inline constexpr OSStatus addResFailed = -194;
inline constexpr OSStatus mapReadErr = -199;

inline constexpr std::int8_t fsCurPerm = 0;
inline constexpr std::int8_t fsRdPerm = 1;
inline constexpr std::int8_t fsRdWrShPerm = 4;

inline constexpr FourCharCode kCoreEndianResourceManagerDomain = "rsrc"_4cc;

/// A block of memory that can be resized, locked, and owned by a resource.
struct HandleRecord {
  std::vector<std::uint8_t> content;
  bool hasContent = true;  ///< false: the handle's master pointer is null
  bool locked = false;
  bool isResource = false;
};
using Handle = std::shared_ptr<HandleRecord>;

/// A block of so many bytes, all 0.
inline Handle NewHandle(std::size_t size) {
  auto handle = std::make_shared<HandleRecord>();
  handle->content.resize(size);
  return handle;
}
inline std::size_t GetHandleSize(const Handle& handle) {
  return handle != nullptr && handle->hasContent ? handle->content.size() : 0;
}

/// Swaps the numbers of one resource in place; `currentlyNative`: into the file's byte order.
using CoreEndianFlipProc =
    std::function<OSStatus(FourCharCode domain, FourCharCode type, std::int16_t id,
                           std::span<std::uint8_t> data, bool currentlyNative)>;

class ResourceManager {
 public:
  virtual ~ResourceManager() = default;

  /// Reference number of the bundle's resource map; 0 or -1 where it isn't open.
  virtual std::int32_t CFBundleOpenBundleResourceMap(std::string_view bundleIdentifier) = 0;
  virtual void CFBundleCloseBundleResourceMap(std::string_view bundleIdentifier,
                                              std::int32_t refNum) = 0;
  /// Opens the file's resource fork and makes it current. A nonzero status leaves `refNum` and the
  /// current file.
  virtual OSStatus FSOpenResourceFile(const FSRef& ref, std::int8_t permissions,
                                      std::int32_t& refNum) = 0;
  /// The same; -1 where it fails.
  virtual std::int32_t FSOpenResFile(const FSRef& ref, std::int8_t permissions) = 0;
  /// Writes what has been changed. What wasn't detached loses its content.
  virtual void CloseResFile(std::int32_t refNum) = 0;
  virtual std::int32_t CurResFile() = 0;
  virtual void UseResFile(std::int32_t refNum) = 0;
  /// From the current file. Null where it hasn't got it. The same handle each time, until the file
  /// is closed or the handle detached.
  virtual Handle Get1Resource(FourCharCode type, std::int16_t id) = 0;
  /// Makes `handle` a plain block, independent of its file.
  virtual void DetachResource(const Handle& handle) = 0;
  /// Makes a plain block a resource of the current file, to be written.
  virtual void AddResource(const Handle& handle, FourCharCode type, std::int16_t id,
                           std::string_view name) = 0;
  /// The content is to be written.
  virtual void ChangedResource(const Handle& handle) = 0;
  /// Writes it, if it has been changed or added: on the disk when this returns. All other resources
  /// of the file stay as they are there at this moment. Fails where another process has changed
  /// this one since it was read, or is writing for longer than a few milliseconds; then it counts
  /// as unchanged.
  virtual void WriteResource(const Handle& handle) = 0;
  /// How the last operation ended: 0, or why it failed.
  virtual OSStatus ResError() = 0;
  /// From now on `flipper` sees each resource of that type as it is read and as it is written.
  virtual OSStatus CoreEndianInstallFlipper(FourCharCode domain, FourCharCode type,
                                            CoreEndianFlipProc flipper) = 0;
};

}  // namespace quorvane
