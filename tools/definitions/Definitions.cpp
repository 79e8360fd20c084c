#include "tools/definitions/Definitions.h"

#include <stdexcept>

#include "src/base/Text.h"
#include "src/completion/ConversionEngine.h"
#include "src/completion/Utf8.h"

namespace quorvane {

std::unique_ptr<Definitions> Definitions::open(Instance& instance) {
  try {
    ConversionEngine::loadTrie(instance);
    auto words = ConversionEngine::getWordsWithFrequencyAndTranslation(instance);
    return std::unique_ptr<Definitions>(new Definitions(instance, std::move(words)));
  } catch (const std::runtime_error&) {  // no word list
    return nullptr;
  }
}

std::u16string Definitions::of(std::u16string_view word) {
  if (!hasUtf8Form(word)) return {};
  Platform& platform = instance_.platform();
  const std::string key = toUtf8(platform.characterSets.lowercaseString(std::u16string(word)));
  const TextList lines =
      words_.ask([&key](const WordTable& words) { return words.annotation(key); });
  std::u16string text;
  bool spoken = true;  // it comes first
  lines.forEach([&](std::string_view utf8) {
    const std::u16string line = fromUtf8(platform.textEncoding, utf8);
    if (!spoken) text += line + u'\n';
    if (spoken && !line.empty()) text += u'[' + line + u"]\n";
    spoken = false;
  });
  if (!text.empty()) text.pop_back();
  return text;
}

}  // namespace quorvane
