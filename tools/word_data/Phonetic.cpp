#include "tools/word_data/Phonetic.h"

#include <algorithm>
#include <array>

#include "src/base/Text.h"
#include "tools/word_data/TextFile.h"

namespace quorvane::word_data {
namespace {

constexpr std::string_view Undefined = "undefined";

// Words and our script are ASCII.
std::u16string wide(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

}  // namespace

Phonex::Phonex(ScriptHost& scripts, std::string_view script) : context_(scripts.newContext()) {
  if (!context_) throw SourceError("phonex.js: no script context to be had");
  context_->evaluateScript(wide(script));
  function_ = context_->objectForKeyedSubscript("phonex");
  if (!function_ || code("a") == Undefined)
    throw SourceError("phonex.js: defines no function phonex");
}

std::string Phonex::code(std::string_view word) {
  const std::array arguments{wide(word)};
  const auto result = function_->callWithArguments(arguments);
  return result ? toUtf8(result->toString()) : std::string(Undefined);
}

CodeGroups groupByCode(Phonex& phonex, std::span<const Word> words) {
  std::vector<const Word*> byFrequency;
  for (const Word& word : words) byFrequency.push_back(&word);
  std::ranges::sort(byFrequency, [](const Word* a, const Word* b) {
    return a->frequency != b->frequency ? a->frequency > b->frequency : a->text < b->text;
  });
  CodeGroups groups;
  for (const Word* word : byFrequency) {
    const std::string code = phonex.code(word->text);
    if (code == Undefined) throw SourceError("phonex.js: no code for \"" + word->text + "\"");
    if (!code.empty()) groups[code].push_back(word->text);
  }
  return groups;
}

}  // namespace quorvane::word_data
