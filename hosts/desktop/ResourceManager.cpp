#include "hosts/desktop/ResourceManager.h"

namespace quorvane::desktop {

std::int32_t ResourceManager::CFBundleOpenBundleResourceMap(std::string_view /*identifier*/) {
  return -1;
}

void ResourceManager::CFBundleCloseBundleResourceMap(std::string_view /*identifier*/,
                                                     std::int32_t /*refNum*/) {}

std::int32_t ResourceManager::CurResFile() { return 0; }

void ResourceManager::UseResFile(std::int32_t /*refNum*/) {}

Handle ResourceManager::Get1Resource(FourCharCode /*type*/, std::int16_t /*id*/) { return nullptr; }

void ResourceManager::DetachResource(const Handle& handle) {
  if (handle != nullptr) handle->isResource = false;
}

}  // namespace quorvane::desktop
