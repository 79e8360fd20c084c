#include <algorithm>

#include "src/base/Log.h"
#include "src/shell/main.h"

namespace quorvane {
namespace {

constexpr std::string_view kInputSourceID = "com.tallowmere.inputmethod.Quorvane";

bool isOurs(const TISInputSource& source) {
  return source.kTISPropertyInputSourceID == kInputSourceID;
}

}  // namespace

// The URL's own text, scheme included, is given as the path.
void registerInputSource(Instance& instance) {
  TextInputSources& sources = instance.platform().textInputSources;
  const std::string url = instance.platform().application.bundleURL();
  if (!url.empty()) {
    const OSStatus status = sources.TISRegisterInputSource(url);
    Log(instance, "Registered source url - from ", url);
    Log(instance, "Register Error ", status);
  }
  const TISInputSourceRef current = sources.TISCopyCurrentKeyboardInputSource();
  Log(instance, "Current name ",
      current ? std::string_view(current->kTISPropertyLocalizedName) : "(null)", " ");
}

// The walk doesn't stop at the first hit.
void activateInputSource(Instance& instance) {
  TextInputSources& sources = instance.platform().textInputSources;
  for (const auto& source : sources.TISCreateInputSourceList(true)) {
    if (!isOurs(*source)) continue;
    sources.TISEnableInputSource(*source);
    if (source->kTISPropertyInputSourceIsSelectCapable) sources.TISSelectInputSource(*source);
  }
}

// The same list from last to first.
void deactivateInputSource(Instance& instance) {
  TextInputSources& sources = instance.platform().textInputSources;
  auto list = sources.TISCreateInputSourceList(true);
  std::reverse(list.begin(), list.end());
  for (const auto& source : list) {
    if (isOurs(*source)) sources.TISDisableInputSource(*source);
  }
}

}  // namespace quorvane
