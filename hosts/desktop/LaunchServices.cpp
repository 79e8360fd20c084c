#include "hosts/desktop/LaunchServices.h"

#include <algorithm>

namespace quorvane::desktop {
namespace {

constexpr Seconds kLongestWait{86'400};

}  // namespace

OSStatus LaunchServices::LSOpenFromRefSpec(const FSRef& ref, std::uint32_t /*launchFlags*/) {
  std::string path;
  const OSStatus status = files_.FSRefMakePath(ref, path);
  return status == noErr ? supervisor_.launch(path) : status;
}

OSStatus LaunchServices::ReceiveNextEvent(FourCharCode eventClass, std::uint32_t kind,
                                          Seconds timeout) {
  if (eventClass != kEventClassApplication || kind != kEventAppLaunchNotification) {
    return eventLoopTimedOutErr;
  }
  bool launched = false;
  const auto isOver = [&] {
    launched = supervisor_.takeLaunched();
    return launched || !supervisor_.awaitsOne() || (isEnding && isEnding());
  };
  const Seconds wait = std::clamp(timeout, Seconds(0), kLongestWait);
  const auto end =
      std::chrono::steady_clock::now() + std::chrono::ceil<std::chrono::milliseconds>(wait);
  runLoop_.runUntil(isOver, std::min<RunLoop::Deadline>(end, withinKey.deadline()));
  if (launched) return noErr;
  supervisor_.stopAwaiting();
  return eventLoopTimedOutErr;
}

}  // namespace quorvane::desktop
