#include "apps/desk/CrashGuard.h"

#include <unistd.h>

#include <cstddef>

namespace quorvane::desk {
namespace {

/// What the handler needs: it can be given nothing, and may ask nobody.
struct Remembered {
  termios modes{};
  std::array<char, 256> farewell{};
  std::size_t size = 0;
  std::array<struct sigaction, kCrashSignals.size()> before{};
};
Remembered remembered;  // NOLINT: a signal handler reaches nothing else

void stepAside(std::size_t i) { ::sigaction(kCrashSignals[i], &remembered.before[i], nullptr); }

void giveBack(int number) {
  [[maybe_unused]] const auto written =
      ::write(STDOUT_FILENO, remembered.farewell.data(), remembered.size);
  ::tcsetattr(STDIN_FILENO, TCSANOW, &remembered.modes);
  for (std::size_t i = 0; i < kCrashSignals.size(); ++i) stepAside(i);
  ::raise(number);
}

}  // namespace

CrashGuard::CrashGuard(const termios& modes, std::string_view farewell) {
  remembered.modes = modes;
  remembered.size = farewell.copy(remembered.farewell.data(), remembered.farewell.size());
  struct sigaction action {};
  action.sa_handler = giveBack;
  for (std::size_t i = 0; i < kCrashSignals.size(); ++i) {
    ::sigaction(kCrashSignals[i], &action, &remembered.before[i]);
  }
}

CrashGuard::~CrashGuard() {
  for (std::size_t i = 0; i < kCrashSignals.size(); ++i) stepAside(i);
}

}  // namespace quorvane::desk
