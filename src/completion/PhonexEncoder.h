#pragma once
// The function `phonex` of a script.

#include <memory>
#include <optional>
#include <string>

#include "platform/ScriptHost.h"

namespace quorvane {

class PhonexEncoder {
 public:
  /// `script`: none where there is no such file.
  PhonexEncoder(ScriptHost& host, std::optional<std::u16string> script)
      : host_(host), script_(std::move(script)) {}

  /// What the function says to `word`, as text; "undefined" where there is no such function.
  std::u16string callWithArguments(const std::u16string& word);

 private:
  ScriptHost& host_;
  std::optional<std::u16string> script_;
  /// Made at the first call, from the script as it was at start: to make a context takes longer
  /// than everything else that the start does.
  std::unique_ptr<JSValue> phonex_;
};

}  // namespace quorvane
