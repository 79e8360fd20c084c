#pragma once
// Where the system's own words go: the log, and the few lines meant for standard output.

#include <string_view>

namespace quorvane {

class LogSink {
 public:
  virtual ~LogSink() = default;

  /// One line, without its line feed. The sink may keep it back until a second has
  /// passed without another.
  virtual void writeLine(std::string_view line) = 0;

  bool enabled = true;       ///< false: nothing is formatted or written
  bool showPrivate = false;  ///< true: the person running the host asked to see typed text
};

class Console {
 public:
  virtual ~Console() = default;

  /// Writes and flushes.
  virtual void print(std::string_view line) = 0;
};

}  // namespace quorvane
