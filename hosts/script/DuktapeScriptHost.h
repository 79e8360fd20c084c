#pragma once
// Scripts by Duktape.
//
// Duktape as it is packaged has no limit of time, and its heap can't be used again once it was left
// in the middle. So each context has a heap of its own whose blocks we can all find: a timer leaves
// a script that doesn't end, whatever it is doing, and its heap is freed behind Duktape's back.

#include "platform/ScriptHost.h"

namespace quorvane {

/// A script has the functions of the language that compute, and neither the clock nor anything
/// else. A context and its values belong to the thread that made them.
class DuktapeScriptHost final : public ScriptHost {
 public:
  std::unique_ptr<JSContext> newContext() override;
};

}  // namespace quorvane
