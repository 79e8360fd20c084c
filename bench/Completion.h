#pragma once
// Word completion on the real word data: lists, loading, fallback, each beside what it can't do
// without or would be without its design.

#include "bench/Ratios.h"

namespace quorvane::bench {

/// False where there is no word data: nothing is measured then.
bool registerCompletion();
void printCompletion(const Ratios& ratios);

// Their parts. Loading comes first: it measures memory while there is little of it.
void registerLoading();
void registerLists();
void registerFallback();
void printLoading(const Ratios& ratios);
void printLists(const Ratios& ratios);
void printFallback(const Ratios& ratios);

}  // namespace quorvane::bench
