#pragma once

#include "platform/Console.h"

namespace quorvane::desktop {

class Console final : public quorvane::Console {
 public:
  /// `descriptor` stays the caller's.
  explicit Console(int descriptor) : descriptor_(descriptor) {}

  /// Ends the line where the text doesn't.
  void print(std::string_view line) override;

 private:
  int descriptor_;
};

/// Writes all of it, in one call where the system takes it so. What a descriptor can't take within
/// a second is given up.
void writeAll(int descriptor, std::string_view text);

}  // namespace quorvane::desktop
