#include "hosts/script/DuktapeScriptHost.h"

#include <array>
#include <utility>
#include <vector>

#include "hosts/script/ScriptHeap.h"
#include "hosts/script/ScriptText.h"

namespace quorvane {
namespace {

using script::ScriptHeap;
using Id = duk_uarridx_t;

/// Of the global object: what reaches the time of day, and with it the C library's locks, and what
/// reaches the interpreter itself.
constexpr std::array kBarred{"Date", "Duktape", "performance"};

/// A heap whose stash holds the values that we hold, by number.
struct Engine {
  ScriptHeap heap;
  Id lastId = 0;
};

// Steps of ScriptHeap::run.

void keep(duk_context* context, Id id) {
  duk_push_heap_stash(context);
  duk_insert(context, -2);
  duk_put_prop_index(context, -2, id);
  duk_pop(context);
}

void fetch(duk_context* context, Id id) {
  duk_push_heap_stash(context);
  duk_get_prop_index(context, -1, id);
  duk_remove(context, -2);
}

duk_ret_t barOutside(duk_context* context, void* /*data*/) {
  duk_push_global_object(context);
  for (const char* const name : kBarred) duk_del_prop_string(context, -1, name);
  return 0;
}

struct Evaluation {
  std::string_view source;
  Id result;

  static duk_ret_t run(duk_context* context, void* data) {
    const auto& call = *static_cast<const Evaluation*>(data);
    duk_push_lstring(context, call.source.data(), call.source.size());
    duk_push_string(context, "script");
    duk_compile(context, DUK_COMPILE_EVAL);
    duk_call(context, 0);
    keep(context, call.result);
    return 0;
  }
};

struct GlobalLookUp {
  std::string_view name;
  Id result;

  static duk_ret_t run(duk_context* context, void* data) {
    const auto& call = *static_cast<const GlobalLookUp*>(data);
    duk_push_global_object(context);
    duk_get_prop_lstring(context, -1, call.name.data(), call.name.size());
    keep(context, call.result);
    return 0;
  }
};

struct FunctionCall {
  Id function;
  const std::vector<std::string>& arguments;
  Id result;

  static duk_ret_t run(duk_context* context, void* data) {
    const auto& call = *static_cast<const FunctionCall*>(data);
    const auto count = static_cast<duk_idx_t>(call.arguments.size());
    duk_require_stack(context, count + 4);
    fetch(context, call.function);
    for (const std::string& argument : call.arguments) {
      duk_push_lstring(context, argument.data(), argument.size());
    }
    duk_call(context, count);
    keep(context, call.result);
    return 0;
  }
};

struct TextOf {
  Id value;
  std::string_view text{};  ///< on the stack until the next run

  static duk_ret_t run(duk_context* context, void* data) {
    auto& call = *static_cast<TextOf*>(data);
    fetch(context, call.value);
    duk_size_t length = 0;
    const char* const text = duk_to_lstring(context, -1, &length);
    call.text = {text, length};
    return 1;
  }
};

duk_ret_t drop(duk_context* context, void* data) {
  duk_push_heap_stash(context);
  duk_del_prop_index(context, -1, *static_cast<const Id*>(data));
  return 0;
}

class Value final : public JSValue {
 public:
  Value(std::shared_ptr<Engine> engine, Id id) : engine_(std::move(engine)), id_(id) {}
  ~Value() override { engine_->heap.run(drop, &id_); }
  Value(const Value&) = delete;
  Value& operator=(const Value&) = delete;

  std::unique_ptr<JSValue> callWithArguments(std::span<const std::u16string> arguments) override {
    std::vector<std::string> texts;
    for (const std::u16string& argument : arguments) texts.push_back(toScriptText(argument));
    FunctionCall call{id_, texts, ++engine_->lastId};
    engine_->heap.run(FunctionCall::run, &call);
    return std::make_unique<Value>(engine_, call.result);
  }

  std::u16string toString() override {
    TextOf call{id_};
    return engine_->heap.run(TextOf::run, &call) ? fromScriptText(call.text) : u"undefined";
  }

 private:
  std::shared_ptr<Engine> engine_;
  Id id_;  ///< one that the stash doesn't know is `undefined`
};

class Context final : public JSContext {
 public:
  explicit Context(std::shared_ptr<Engine> engine) : engine_(std::move(engine)) {}

  std::unique_ptr<JSValue> evaluateScript(const std::u16string& script) override {
    const std::string source = toScriptText(script);
    Evaluation call{source, ++engine_->lastId};
    engine_->heap.run(Evaluation::run, &call);
    return std::make_unique<Value>(engine_, call.result);
  }

  std::unique_ptr<JSValue> objectForKeyedSubscript(std::string_view name) override {
    GlobalLookUp call{name, ++engine_->lastId};
    engine_->heap.run(GlobalLookUp::run, &call);
    return std::make_unique<Value>(engine_, call.result);
  }

 private:
  std::shared_ptr<Engine> engine_;
};

}  // namespace

std::unique_ptr<JSContext> DuktapeScriptHost::newContext() {
  auto engine = std::make_shared<Engine>();
  if (!engine->heap.run(barOutside, nullptr)) return nullptr;
  return std::make_unique<Context>(std::move(engine));
}

}  // namespace quorvane
