#include "tests/support/Law.h"

#include <cstdio>
#include <cstdlib>

namespace quorvane::fuzz {

void require(bool holds, std::string_view law) {
  if (holds) return;
  std::fprintf(stderr, "law broken: %.*s\n", static_cast<int>(law.size()), law.data());
  std::abort();
}

}  // namespace quorvane::fuzz
