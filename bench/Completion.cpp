#include "bench/Completion.h"

#include "bench/CompletionEngine.h"

namespace quorvane::bench {

bool registerCompletion() {
  if (!std::filesystem::exists(kData)) return false;
  registerLoading();
  registerLists();
  registerFallback();
  return true;
}

void printCompletion(const Ratios& ratios) {
  if (!std::filesystem::exists(kData)) return;
  printLists(ratios);
  printLoading(ratios);
  printFallback(ratios);
}

}  // namespace quorvane::bench
