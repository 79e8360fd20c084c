#pragma once

#include <map>

#include "platform/TextServicesManager.h"

namespace quorvane::desktop {

/// Knows no documents; keeps window properties in memory.
class TextServicesManager final : public quorvane::TextServicesManager {
 public:
  std::uint64_t TSMGetActiveDocument() override { return 0; }
  OSStatus TSMGetDocumentProperty(std::uint64_t document, FourCharCode tag,
                                  std::uint32_t& value) override;
  std::uint64_t GetWindowProperty(std::uint64_t window) override;
  void SetWindowProperty(std::uint64_t window, std::uint64_t session) override;
  void SetComponentInstanceStorage(void* instance, std::uint64_t storage) override;

 private:
  std::map<std::uint64_t, std::uint64_t> windows_;
  std::map<void*, std::uint64_t> instances_;
};

}  // namespace quorvane::desktop
