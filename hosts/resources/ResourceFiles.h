#pragma once
// The Resource Manager over a ForkStore: open files, the current one, and the handles that lead to
// their resources. Reading needs no lock. Each write puts one resource into what the file holds at
// that moment, unless another process has changed that one since it was read.

#include <map>
#include <optional>
#include <vector>

#include "hosts/resources/AppleDouble.h"
#include "hosts/resources/ForkStore.h"
#include "hosts/resources/ResourceFork.h"
#include "platform/ResourceManager.h"

namespace quorvane::resources {

class ResourceFiles : public ResourceManager {
 public:
  static constexpr std::int32_t kApplicationFile = 1;  ///< current at the start; has no resources

  explicit ResourceFiles(ForkStore& store) : store_(store) {}

  OSStatus FSOpenResourceFile(const FSRef& ref, std::int8_t permissions,
                              std::int32_t& refNum) override;
  std::int32_t FSOpenResFile(const FSRef& ref, std::int8_t permissions) override;
  void CloseResFile(std::int32_t refNum) override;
  std::int32_t CurResFile() override { return current_; }
  void UseResFile(std::int32_t refNum) override;
  Handle Get1Resource(FourCharCode type, std::int16_t id) override;
  void DetachResource(const Handle& handle) override;
  void AddResource(const Handle& handle, FourCharCode type, std::int16_t id,
                   std::string_view name) override;
  void ChangedResource(const Handle& handle) override;
  void WriteResource(const Handle& handle) override;
  OSStatus ResError() override { return error_; }
  OSStatus CoreEndianInstallFlipper(FourCharCode domain, FourCharCode type,
                                    CoreEndianFlipProc flipper) override;

 protected:
  /// A map that nobody writes; it doesn't become current.
  std::int32_t openMap(ResourceFork fork);

 private:
  struct Loaded {
    Handle handle;
    FourCharCode type = 0;
    std::int16_t id = 0;
    std::string name;  ///< of an added one
    bool changed = false;
  };
  struct OpenFile {
    std::optional<FSRef> ref;      ///< none: it can't be written
    ResourceFork fork;             ///< as it was read, with what was written since
    std::vector<Loaded> loaded{};  ///< not detached
  };
  struct Place {
    OpenFile* file = nullptr;
    Loaded* loaded = nullptr;
  };

  /// Null in both where the handle belongs to no open file.
  Place find(const Handle& handle);
  Handle handleOf(OpenFile& file, FourCharCode type, std::int16_t id);
  OSStatus complain(const FSRef& ref, std::string_view reason, OSStatus status);
  OSStatus readFile(const FSRef& ref, AppleDouble& file, ResourceFork& fork);
  OSStatus replaceFile(const FSRef& ref, AppleDouble file, const ResourceFork& fork);
  void put(ResourceFork& fork, const Loaded& resource);
  OSStatus write(OpenFile& file, Loaded& resource);
  static std::string_view hindranceOf(const OpenFile& file, const ResourceFork& now,
                                      const Loaded& loaded);
  OSStatus writeAll(OpenFile& file);
  void flip(const Loaded& resource, std::span<std::uint8_t> data, bool currentlyNative);
  std::int32_t add(OpenFile file);

  ForkStore& store_;
  std::map<std::int32_t, OpenFile> files_;
  std::map<FourCharCode, CoreEndianFlipProc> flippers_;
  std::int32_t current_ = kApplicationFile;
  std::int32_t last_ = kApplicationFile;
  OSStatus error_ = noErr;
};

}  // namespace quorvane::resources
