#include "src/base/Process.h"

namespace quorvane {

Process::~Process() {
  for (auto index = order_.rbegin(); index != order_.rend(); ++index) states_[*index].reset();
}

std::size_t Process::nextStateIndex() {
  static std::size_t next = 0;
  return next++;
}

}  // namespace quorvane
