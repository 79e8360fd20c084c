#pragma once
// Every process in turn. It ends even where the list changes all the time and never does.

#include "src/base/Instance.h"

namespace quorvane {

class ProcessWalk {
 public:
  explicit ProcessWalk(Instance& instance) : manager_(instance.platform().processManager) {}

  /// False: there are no more. `psn`, which begins as no process, becomes the next one.
  bool next(ProcessSerialNumber& psn) {
    return steps_++ < kLimit && manager_.GetNextProcess(psn) == noErr;
  }

 private:
  static constexpr int kLimit = 4096;
  ProcessManager& manager_;
  int steps_ = 0;
};

}  // namespace quorvane
