#pragma once
// Words by how they sound, by the very script that the input method encodes typed text with.

#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ScriptHost.h"
#include "tools/word_data/Selection.h"

namespace quorvane::word_data {

/// The function `phonex` of a script.
class Phonex {
 public:
  /// Throws SourceError where the script defines no function that makes a code.
  Phonex(ScriptHost& scripts, std::string_view script);

  std::string code(std::string_view word);

 private:
  std::unique_ptr<JSContext> context_;
  std::unique_ptr<JSValue> function_;
};

/// Code -> its words, the commonest first, equals in the order of their letters. Words without a
/// code are left out.
using CodeGroups = std::map<std::string, std::vector<std::string>>;
CodeGroups groupByCode(Phonex& phonex, std::span<const Word> words);

}  // namespace quorvane::word_data
