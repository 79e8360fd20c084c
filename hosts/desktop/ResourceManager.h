#pragma once

#include "platform/ResourceManager.h"

namespace quorvane::desktop {

/// This program's bundle has no resource map, and no resource file is open.
class ResourceManager final : public quorvane::ResourceManager {
 public:
  std::int32_t CFBundleOpenBundleResourceMap(std::string_view bundleIdentifier) override;
  void CFBundleCloseBundleResourceMap(std::string_view bundleIdentifier,
                                      std::int32_t refNum) override;
  std::int32_t CurResFile() override;
  void UseResFile(std::int32_t refNum) override;
  Handle Get1Resource(FourCharCode type, std::int16_t id) override;
  void DetachResource(const Handle& handle) override;
};

}  // namespace quorvane::desktop
