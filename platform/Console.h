#pragma once
// The few lines that are meant for standard output.

#include <string_view>

namespace quorvane {

class Console {
 public:
  virtual ~Console() = default;

  /// Writes and flushes.
  virtual void print(std::string_view line) = 0;
};

}  // namespace quorvane
