#include "fuzz/Target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quorvane::fuzz::run({data, size});
  return 0;
}
