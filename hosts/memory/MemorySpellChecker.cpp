#include "hosts/memory/MemorySpellChecker.h"

#include "src/base/Text.h"

namespace quorvane::memory {

std::vector<std::u16string> MemorySpellChecker::guessesForWordRange(NSRange range,
                                                                    const std::u16string& text,
                                                                    std::string_view language,
                                                                    std::int64_t /*documentTag*/) {
  const bool inside = range.location <= text.size() && range.length <= text.size() - range.location;
  const std::u16string word = inside ? text.substr(range.location, range.length) : u"";
  journal_.call("guessesForWordRange \"", toUtf8(word), "\" ", language);
  const auto known = guesses.find(word);
  if (language != "en" || known == guesses.end()) return {};
  return known->second;
}

}  // namespace quorvane::memory
