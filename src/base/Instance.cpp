#include "src/base/Instance.h"

namespace quorvane {

Instance::~Instance() {
  for (auto index = order_.rbegin(); index != order_.rend(); ++index) states_[*index].reset();
}

std::size_t Instance::nextStateIndex() {
  static std::size_t next = 0;
  return next++;
}

}  // namespace quorvane
