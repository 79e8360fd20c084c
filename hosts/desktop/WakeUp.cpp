#include "hosts/desktop/WakeUp.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>

#include <array>
#include <utility>

namespace quorvane::desktop {

void wakeUp(const std::filesystem::path& announcement) {
  // Both times: a change of one alone is told as reading or writing.
  ::utimensat(AT_FDCWD, announcement.c_str(), nullptr, AT_SYMLINK_NOFOLLOW);
}

WakeUps::WakeUps(RunLoop& runLoop, const std::filesystem::path& announcement,
                 std::function<void()> handler)
    : events_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
  if (::inotify_add_watch(events_.get(), announcement.c_str(), IN_ATTRIB) < 0) return;
  watch_ = runLoop.watch(events_.get(), G_IO_IN,
                         [events = events_.get(), handler = std::move(handler)](GIOCondition) {
                           alignas(inotify_event) std::array<char, 4096> told;
                           if (::read(events, told.data(), told.size()) > 0) handler();
                         });
}

}  // namespace quorvane::desktop
