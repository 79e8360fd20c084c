#include "src/completion/PhonexEncoder.h"

#include <span>

namespace quorvane {
namespace {

/// The value keeps its context alive. Null where no context can be had.
std::unique_ptr<JSValue> functionOf(ScriptHost& host, const std::u16string& script) {
  const std::unique_ptr<JSContext> context = host.newContext();
  if (context == nullptr) return nullptr;
  context->evaluateScript(script);
  return context->objectForKeyedSubscript("phonex");
}

}  // namespace

std::u16string PhonexEncoder::callWithArguments(const std::u16string& word) {
  if (phonex_ == nullptr && script_) phonex_ = functionOf(host_, *script_);
  if (phonex_ == nullptr) return u"undefined";
  return phonex_->callWithArguments(std::span(&word, 1))->toString();
}

}  // namespace quorvane
