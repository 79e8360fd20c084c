#pragma once
// Text to a descriptor whose reader may have stopped reading: nobody is held up by that for long.

#include <string_view>

namespace quorvane::desktop {

class BoundedWriter {
 public:
  /// `descriptor` stays the caller's; it may be a blocking one.
  explicit BoundedWriter(int descriptor) : descriptor_(descriptor) {}

  /// Writes all of it. What can't be taken within a second is given up; from then on nothing is
  /// waited for until there is room again.
  void write(std::string_view text);

 private:
  bool waitForRoom();

  int descriptor_;
  bool stuck_ = false;
};

}  // namespace quorvane::desktop
