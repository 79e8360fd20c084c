#pragma once
// Where the log goes.

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

}  // namespace quorvane
