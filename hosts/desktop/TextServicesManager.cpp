#include "hosts/desktop/TextServicesManager.h"

namespace quorvane::desktop {
namespace {

constexpr OSStatus kDocumentPropertyNotFound = -2529;

}  // namespace

OSStatus TextServicesManager::TSMGetDocumentProperty(std::uint64_t /*document*/,
                                                     FourCharCode /*tag*/,
                                                     std::uint32_t& /*value*/) {
  return kDocumentPropertyNotFound;
}

std::uint64_t TextServicesManager::GetWindowProperty(std::uint64_t window) {
  const auto found = windows_.find(window);
  return found == windows_.end() ? 0 : found->second;
}

void TextServicesManager::SetWindowProperty(std::uint64_t window, std::uint64_t session) {
  windows_[window] = session;
}

void TextServicesManager::SetComponentInstanceStorage(void* instance, std::uint64_t storage) {
  if (instance != nullptr) instances_[instance] = storage;
}

}  // namespace quorvane::desktop
