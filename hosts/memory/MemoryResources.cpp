#include "hosts/memory/MemoryResources.h"

#include <algorithm>
#include <utility>

namespace quorvane::memory {

std::int32_t MemoryResources::CFBundleOpenBundleResourceMap(std::string_view bundleIdentifier) {
  const std::size_t line = journal_.call("CFBundleOpenBundleResourceMap ", bundleIdentifier);
  open_ = std::max(openResult, 0);
  return journal_.result(line, openResult);
}

void MemoryResources::CFBundleCloseBundleResourceMap(std::string_view bundleIdentifier,
                                                     std::int32_t refNum) {
  journal_.call("CFBundleCloseBundleResourceMap ", bundleIdentifier, " ", refNum);
  if (refNum != open_) return;
  // Resources go with their file; only what was detached keeps its content.
  for (const auto& [name, handle] : loaded_) handle->hasContent = false;
  loaded_.clear();
  if (current_ == open_) current_ = kApplicationFile;
  open_ = 0;
}

std::int32_t MemoryResources::CurResFile() {
  journal_.call("CurResFile");
  return current_;
}

void MemoryResources::UseResFile(std::int32_t refNum) {
  journal_.call("UseResFile ", refNum);
  if (refNum == kApplicationFile || (refNum == open_ && refNum != 0)) current_ = refNum;
}

Handle MemoryResources::Get1Resource(FourCharCode type, std::int16_t id) {
  const std::size_t line = journal_.call("Get1Resource ", Journal::Code{type}, " ", id);
  const auto found = bundle.find({type, id});
  if (open_ == 0 || current_ != open_ || found == bundle.end()) {
    journal_.result(line, std::string_view("null"));
    return nullptr;
  }
  Handle& handle = loaded_[found->first];
  if (!handle) {
    handle = std::make_shared<HandleRecord>();
    handle->content = found->second;
    handle->isResource = true;
  }
  return handle;
}

void MemoryResources::DetachResource(const Handle& handle) {
  journal_.call("DetachResource");
  if (!handle) return;
  handle->isResource = false;
  std::erase_if(loaded_, [&](const auto& entry) { return entry.second == handle; });
}

}  // namespace quorvane::memory
