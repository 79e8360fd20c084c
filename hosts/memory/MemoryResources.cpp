#include "hosts/memory/MemoryResources.h"

namespace quorvane::memory {

std::int32_t MemoryResources::CFBundleOpenBundleResourceMap(std::string_view bundleIdentifier) {
  const std::size_t line = journal_.call("CFBundleOpenBundleResourceMap ", bundleIdentifier);
  if (openResult <= 0) return journal_.result(line, openResult);
  resources::ResourceFork map;
  for (const auto& [name, content] : bundle) map.at(name.first, name.second).data = content;
  return journal_.result(line, openMap(std::move(map)));
}

void MemoryResources::CFBundleCloseBundleResourceMap(std::string_view bundleIdentifier,
                                                     std::int32_t refNum) {
  journal_.call("CFBundleCloseBundleResourceMap ", bundleIdentifier, " ", refNum);
  CloseResFile(refNum);
}

OSStatus MemoryResources::FSOpenResourceFile(const FSRef& ref, std::int8_t permissions,
                                             std::int32_t& refNum) {
  const std::size_t line = journal_.call("FSOpenResourceFile ", permissions);
  return journal_.result(line, ResourceFiles::FSOpenResourceFile(ref, permissions, refNum));
}

void MemoryResources::WriteResource(const Handle& handle) {
  const std::size_t line = journal_.call("WriteResource");
  ResourceFiles::WriteResource(handle);
  journal_.result(line, ResError());
}

}  // namespace quorvane::memory
