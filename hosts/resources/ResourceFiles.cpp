#include "hosts/resources/ResourceFiles.h"

#include <bit>
#include <utility>

namespace quorvane::resources {

OSStatus ResourceFiles::FSOpenResourceFile(const FSRef& ref, std::int8_t permissions,
                                           std::int32_t& refNum) {
  OpenFile file;
  if (permissions != fsRdPerm) file.ref = ref;
  AppleDouble around;
  error_ = readFile(ref, around, file.fork);
  if (error_ == noErr && around.content(kResourceForkEntry).empty()) error_ = eofErr;
  if (error_ != noErr) return error_;
  current_ = refNum = add(std::move(file));
  return noErr;
}

std::int32_t ResourceFiles::FSOpenResFile(const FSRef& ref, std::int8_t permissions) {
  std::int32_t refNum = -1;
  FSOpenResourceFile(ref, permissions, refNum);
  return refNum;
}

std::int32_t ResourceFiles::openMap(ResourceFork fork) {
  return add({.ref = {}, .fork = std::move(fork)});
}

std::int32_t ResourceFiles::add(OpenFile file) {
  files_.emplace(++last_, std::move(file));
  return last_;
}

void ResourceFiles::CloseResFile(std::int32_t refNum) {
  const auto found = files_.find(refNum);
  error_ = found == files_.end() ? resFNotFound : writeAll(found->second);
  if (found == files_.end()) return;
  for (const Loaded& each : found->second.loaded) {
    *each.handle = {};
    each.handle->hasContent = false;
  }
  files_.erase(found);
  if (current_ == refNum) current_ = kApplicationFile;
}

void ResourceFiles::UseResFile(std::int32_t refNum) {
  const bool known = refNum == kApplicationFile || files_.contains(refNum);
  error_ = known ? noErr : resFNotFound;
  if (known) current_ = refNum;
}

Handle ResourceFiles::Get1Resource(FourCharCode type, std::int16_t id) {
  const auto file = files_.find(current_);
  Handle handle = file == files_.end() ? nullptr : handleOf(file->second, type, id);
  error_ = handle == nullptr ? resNotFound : noErr;
  return handle;
}

Handle ResourceFiles::handleOf(OpenFile& file, FourCharCode type, std::int16_t id) {
  for (const Loaded& each : file.loaded) {
    if (each.type == type && each.id == id) return each.handle;
  }
  const Resource* const resource = file.fork.find(type, id);
  if (resource == nullptr) return nullptr;
  Handle handle = NewHandle(0);
  handle->content = resource->data;
  handle->isResource = true;
  file.loaded.push_back({.handle = handle, .type = type, .id = id, .name = {}});
  flip(file.loaded.back(), handle->content, false);
  return handle;
}

void ResourceFiles::DetachResource(const Handle& handle) {
  const Place place = find(handle);
  error_ = place.loaded == nullptr ? resNotFound : noErr;
  if (handle != nullptr) handle->isResource = false;
  if (place.loaded == nullptr) return;
  std::erase_if(place.file->loaded, [&](const Loaded& each) { return each.handle == handle; });
}

void ResourceFiles::AddResource(const Handle& handle, FourCharCode type, std::int16_t id,
                                std::string_view name) {
  const auto file = files_.find(current_);
  error_ = addResFailed;
  if (handle == nullptr || !handle->hasContent || handle->isResource) return;
  if (file == files_.end() || !file->second.ref) return;
  handle->isResource = true;
  file->second.loaded.push_back(
      {.handle = handle, .type = type, .id = id, .name = std::string(name), .changed = true});
  error_ = noErr;
}

void ResourceFiles::ChangedResource(const Handle& handle) {
  const Place place = find(handle);
  error_ = place.loaded == nullptr ? resNotFound : noErr;
  if (place.loaded != nullptr) place.loaded->changed = true;
}

void ResourceFiles::WriteResource(const Handle& handle) {
  const Place place = find(handle);
  error_ = place.loaded == nullptr ? resNotFound : write(*place.file, *place.loaded);
}

OSStatus ResourceFiles::CoreEndianInstallFlipper(FourCharCode domain, FourCharCode type,
                                                 CoreEndianFlipProc flipper) {
  if (domain != kCoreEndianResourceManagerDomain) return paramErr;
  flippers_[type] = std::move(flipper);
  return noErr;
}

ResourceFiles::Place ResourceFiles::find(const Handle& handle) {
  for (auto& [refNum, file] : files_) {
    const auto loaded = std::ranges::find(file.loaded, handle, &Loaded::handle);
    if (loaded != file.loaded.end()) return {&file, &*loaded};
  }
  return {};
}

OSStatus ResourceFiles::complain(const FSRef& ref, std::string_view reason, OSStatus status) {
  store_.complain(ref, reason);
  return status;
}

OSStatus ResourceFiles::readFile(const FSRef& ref, AppleDouble& file, ResourceFork& fork) {
  const std::optional<Bytes> bytes = store_.read(ref);
  if (!bytes) return fnfErr;
  Outcome<AppleDouble> around = readAppleDouble(*bytes);
  if (!around) return complain(ref, around.fault, mapReadErr);
  Outcome<ResourceFork> inside = readResourceFork(around.value->content(kResourceForkEntry));
  if (!inside) return complain(ref, inside.fault, mapReadErr);
  file = std::move(*around.value);
  fork = std::move(*inside.value);
  return noErr;
}

OSStatus ResourceFiles::replaceFile(const FSRef& ref, AppleDouble file, const ResourceFork& fork) {
  Outcome<Bytes> inside = writeResourceFork(fork);
  if (!inside) return complain(ref, inside.fault, ioErr);
  file.contentOf(kResourceForkEntry) = std::move(*inside.value);
  const Outcome<Bytes> around = writeAppleDouble(file);
  if (!around) return complain(ref, around.fault, ioErr);
  return store_.replace(ref, *around.value) ? noErr : ioErr;
}

OSStatus ResourceFiles::write(OpenFile& file, Loaded& resource) {
  if (!std::exchange(resource.changed, false)) return noErr;
  if (!file.ref) return wrPermErr;
  const ForkStore::Lock lock = store_.lock(*file.ref);
  if (lock == nullptr) return complain(*file.ref, "the lock can't be had", wrPermErr);
  AppleDouble around;
  ResourceFork fork;
  OSStatus status = readFile(*file.ref, around, fork);
  if (status != noErr) return status;
  const std::string_view hindrance = hindranceOf(file, fork, resource);
  if (!hindrance.empty()) return complain(*file.ref, hindrance, wrPermErr);
  put(fork, resource);
  status = replaceFile(*file.ref, std::move(around), fork);
  if (status != noErr) return status;
  put(file.fork, resource);
  return noErr;
}

/// Why it isn't written into what the file holds by now; empty: it is. Other processes may have
/// written other resources since.
std::string_view ResourceFiles::hindranceOf(const OpenFile& file, const ResourceFork& now,
                                            const Loaded& loaded) {
  const Resource* const before = file.fork.find(loaded.type, loaded.id);
  const Resource* const here = now.find(loaded.type, loaded.id);
  if ((now.attributes & mapReadOnly) != 0) return "they are marked as read-only";
  if (here != nullptr && (here->attributes & resProtected) != 0) return "one is protected";
  const bool same =
      before == nullptr || here == nullptr ? before == here : before->data == here->data;
  return same ? "" : "another process has changed one meanwhile";
}

void ResourceFiles::put(ResourceFork& fork, const Loaded& resource) {
  const bool isNew = fork.find(resource.type, resource.id) == nullptr;
  Resource& target = fork.at(resource.type, resource.id);
  if (isNew && !resource.name.empty()) target.name = resource.name;
  target.data = resource.handle->content;
  flip(resource, target.data, true);
}

OSStatus ResourceFiles::writeAll(OpenFile& file) {
  OSStatus first = noErr;
  for (Loaded& each : file.loaded) {
    const OSStatus status = write(file, each);
    if (first == noErr) first = status;
  }
  return first;
}

void ResourceFiles::flip(const Loaded& resource, std::span<std::uint8_t> data,
                         bool currentlyNative) {
  const auto flipper = flippers_.find(resource.type);
  if (std::endian::native == std::endian::big || flipper == flippers_.end()) return;
  flipper->second(kCoreEndianResourceManagerDomain, resource.type, resource.id, data,
                  currentlyNative);
}

}  // namespace quorvane::resources
