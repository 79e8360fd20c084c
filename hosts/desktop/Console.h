#pragma once

#include "hosts/desktop/BoundedWriter.h"
#include "platform/Console.h"

namespace quorvane::desktop {

class Console final : public quorvane::Console {
 public:
  /// `descriptor` stays the caller's.
  explicit Console(int descriptor) : writer_(descriptor) {}

  /// Ends the line where the text doesn't.
  void print(std::string_view line) override;

 private:
  BoundedWriter writer_;
};

}  // namespace quorvane::desktop
