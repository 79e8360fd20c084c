// What is shown beside a candidate.

#include "src/base/Text.h"
#include "src/completion/ConversionEngine.h"
#include "src/completion/Utf8.h"

namespace quorvane {
namespace {

constexpr std::size_t kLongestWithoutSymbol = 3;

}  // namespace

std::u16string ConversionEngine::getAnnotation(const std::u16string& word) {
  const std::u16string lowered = lowercaseString(word);
  Words lines = getTranslations(lowered);
  if (lines.empty()) return {};
  const std::u16string symbol = getPhoneticSymbolOfWord(lowered);
  std::u16string text = symbol.empty() ? lines.front() : u"[" + symbol + u"]\n" + lines.front();
  for (const std::u16string& line : std::span(lines).subspan(1)) text.append(u"\n").append(line);
  return text;
}

ConversionEngine::Words ConversionEngine::getTranslations(const std::u16string& word) {
  Words lines;
  bool symbol = true;  // it comes first
  annotationOf(word).forEach([&](std::string_view line) {
    if (!symbol) lines.push_back(decoded(line));
    symbol = false;
  });
  return lines;
}

std::u16string ConversionEngine::getPhoneticSymbolOfWord(const std::u16string& word) {
  if (word.size() <= kLongestWithoutSymbol) return {};
  return decoded(annotationOf(lowercaseString(word)).front());
}

TextList ConversionEngine::annotationOf(const std::u16string& word) {
  if (!hasUtf8Form(word)) return {};
  return data_.wordsWithFrequencyAndTranslation.ask(
      [key = toUtf8(word)](const WordTable& table) { return table.annotation(key); });
}

std::u16string ConversionEngine::decoded(std::string_view utf8) {
  return fromUtf8(instance_.platform().textEncoding, utf8);
}

}  // namespace quorvane
