#pragma once
// Text Services Manager, window properties and the component instance: the classic text-service
// calls that sessions still make.

#include "platform/MacTypes.h"

namespace quorvane {

class TextServicesManager {
 public:
  virtual ~TextServicesManager() = default;

  /// 0 where no document is active.
  virtual std::uint64_t TSMGetActiveDocument() = 0;
  /// A property of 4 bytes. Nonzero where the document hasn't got it; `value` then stays as it was.
  virtual OSStatus TSMGetDocumentProperty(std::uint64_t document, FourCharCode tag,
                                          std::uint32_t& value) = 0;
  /// The session stored with a window; 0 where there is none.
  virtual std::uint64_t GetWindowProperty(std::uint64_t window) = 0;
  virtual void SetWindowProperty(std::uint64_t window, std::uint64_t session) = 0;
  /// A null instance is accepted and stores nothing.
  virtual void SetComponentInstanceStorage(void* instance, std::uint64_t storage) = 0;
};

}  // namespace quorvane
