#pragma once
// JavaScriptCore: a script, and calls into it. A script can't do anything but compute. One that
// runs for longer than a second, or asks for too much memory, is stopped, and its context counts as
// broken from then on: every value of it is `undefined`.

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace quorvane {

/// A value of a script; it keeps its context alive.
class JSValue {
 public:
  virtual ~JSValue() = default;

  /// `undefined` where this is no function, or the function threw.
  virtual std::unique_ptr<JSValue> callWithArguments(std::span<const std::u16string> arguments) = 0;
  /// "undefined" for undefined.
  virtual std::u16string toString() = 0;
};

class JSContext {
 public:
  virtual ~JSContext() = default;

  /// The value of the last expression, `undefined` where the script is broken.
  virtual std::unique_ptr<JSValue> evaluateScript(const std::u16string& script) = 0;
  /// A property of the global object, `undefined` where there is none.
  virtual std::unique_ptr<JSValue> objectForKeyedSubscript(std::string_view name) = 0;
};

class ScriptHost {
 public:
  virtual ~ScriptHost() = default;

  /// A context of its own. Null where none can be had.
  virtual std::unique_ptr<JSContext> newContext() = 0;
};

}  // namespace quorvane
