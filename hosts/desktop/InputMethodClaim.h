#pragma once
// The right to be the input method of one set of segments: two that work on the same ones damage
// each other's texts. The lock is the right, and goes with its process however that ends; the empty
// file that it is on stays.

#include <sys/types.h>

#include "hosts/desktop/Descriptor.h"
#include "hosts/desktop/RuntimeFolder.h"

namespace quorvane::desktop {

class InputMethodClaim {
 public:
  /// Throws std::runtime_error, with a message that says what to do, where the file can't be used.
  InputMethodClaim(const RuntimeFolder& folder, std::uint32_t keyOffset);

  /// Held for as long as this object lives; false: another process was first.
  [[nodiscard]] bool isOurs() const { return ours_; }
  /// Who was first; 0: can't be told any more.
  [[nodiscard]] pid_t otherHolder() const { return otherHolder_; }

 private:
  Descriptor file_;
  bool ours_ = false;
  pid_t otherHolder_ = 0;
};

}  // namespace quorvane::desktop
