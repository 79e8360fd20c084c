#pragma once
// Gives the terminal back when the program crashes.

#include <termios.h>

#include <array>
#include <csignal>
#include <string_view>

namespace quorvane::desk {

inline constexpr std::array<int, 6> kCrashSignals{SIGABRT, SIGBUS,  SIGFPE,
                                                  SIGILL,  SIGQUIT, SIGSEGV};

/// There is at most one, while the screen is being drawn on; the signal then ends the program as it
/// would have done anyway.
class CrashGuard {
 public:
  /// `modes`: what the terminal is to have again; `farewell` is written to it.
  CrashGuard(const termios& modes, std::string_view farewell);
  ~CrashGuard();
  CrashGuard(const CrashGuard&) = delete;
  CrashGuard& operator=(const CrashGuard&) = delete;
};

}  // namespace quorvane::desk
