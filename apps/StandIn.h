#pragma once
// The stand-in main application as a child process.

#include <sys/types.h>

#include <string>
#include <vector>

#include "hosts/desktop/Descriptor.h"
#include "tools/checker/CheckerOptions.h"

namespace quorvane {

/// What `quorvane` is told, so that the stand-in runs with these options.
std::vector<std::string> standInArguments(const checker::CheckerOptions& options, bool showText);

/// Runs `quorvane checker`. It ends when this object does, and when this process dies.
class StandIn {
 public:
  enum class Talk { None, Log, LogWithText };  ///< to our standard error

  /// Of `options` smart characters and windows count. Throws std::system_error where it can't be
  /// started.
  explicit StandIn(Talk talk, const checker::CheckerOptions& options = {});
  ~StandIn() { end(); }
  StandIn(const StandIn&) = delete;
  StandIn& operator=(const StandIn&) = delete;

  [[nodiscard]] pid_t pid() const { return pid_; }
  /// False once it has ended by itself.
  bool running();
  /// What it said last on standard error where nobody else is told; empty: nothing.
  std::string lastLine();
  /// From now on nobody wants to know.
  void stopListening() { listener_.close(); }
  /// Asks it to end, insists after two seconds, and waits for it.
  void end();

 private:
  bool reap(int options);

  desktop::Descriptor listener_;  ///< invalid: it talks to our standard error
  pid_t pid_ = -1;
  bool ended_ = false;
};

}  // namespace quorvane
