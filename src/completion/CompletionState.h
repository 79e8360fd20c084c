#pragma once
// The process globals of word completion. `main` fills them in this order; all are null before.

#include <memory>

#include "src/base/Instance.h"

namespace quorvane {

class ConversionEngine;

struct CompletionState {
  std::unique_ptr<IMKServer> server;  ///< outlives the panel that is made with it
  std::unique_ptr<IMKCandidates> sharedCandidates;
  ConversionEngine* engine = nullptr;
  UserDefaults* preference = nullptr;
};

}  // namespace quorvane
