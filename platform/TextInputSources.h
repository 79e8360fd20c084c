#pragma once
// Text Input Sources: registering and choosing the input method.

#include <memory>
#include <string>
#include <vector>

#include "platform/MacTypes.h"

namespace quorvane {

struct TISInputSource {
  std::string kTISPropertyInputSourceID;
  std::string kTISPropertyLocalizedName;
  bool kTISPropertyInputSourceIsSelectCapable = false;
  /// As platform/UCKeyboardLayout.h describes it; null for an input method.
  std::shared_ptr<const std::vector<std::uint8_t>> kTISPropertyUnicodeKeyLayoutData;
};
using TISInputSourceRef = std::shared_ptr<TISInputSource>;

class TextInputSources {
 public:
  virtual ~TextInputSources() = default;

  /// `path` is a file path.
  virtual OSStatus TISRegisterInputSource(const std::string& path) = 0;
  virtual std::vector<TISInputSourceRef> TISCreateInputSourceList(bool includeAllInstalled) = 0;
  virtual OSStatus TISEnableInputSource(TISInputSource& source) = 0;
  virtual OSStatus TISDisableInputSource(TISInputSource& source) = 0;
  virtual OSStatus TISSelectInputSource(TISInputSource& source) = 0;
  /// Null where there is none.
  virtual TISInputSourceRef TISCopyCurrentKeyboardInputSource() = 0;
  /// The layout in force, or, where that can't type ASCII, the one that stands in for it. Looked up
  /// anew at each call. Null where there is none.
  virtual TISInputSourceRef TISCopyCurrentASCIICapableKeyboardLayoutInputSource() = 0;
};

}  // namespace quorvane
