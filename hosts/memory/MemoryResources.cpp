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

}  // namespace quorvane::memory
