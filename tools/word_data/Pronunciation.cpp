#include "tools/word_data/Pronunciation.h"

#include <algorithm>
#include <vector>

#include "tools/word_data/Phones.h"
#include "tools/word_data/PlainWord.h"
#include "tools/word_data/TextFile.h"

namespace quorvane::word_data {
namespace {

using Phones = std::vector<Phone>;

std::optional<Phones> readPhones(std::string_view text) {
  Phones phones;
  for (const std::string_view name : fields(text)) {
    const auto phone = phoneNamed(name);
    if (!phone) return {};
    phones.push_back(*phone);
  }
  return phones;
}

// Where the syllable of the vowel at `vowel` begins: as many consonants before it as can begin one.
std::size_t syllableStart(const Phones& phones, std::size_t vowel) {
  std::size_t start = vowel;
  std::string onset;
  while (start > 0 && !phones[start - 1].isVowel) {
    onset.insert(0, phones[start - 1].ipa);
    if (!isOnset(onset)) break;
    --start;
  }
  const bool wordBegins = std::none_of(phones.begin(), phones.begin() + static_cast<long>(start),
                                       [](const Phone& phone) { return phone.isVowel; });
  return wordBegins ? 0 : start;
}

// The mark to be written before each phone.
std::vector<std::string_view> stressMarks(const Phones& phones) {
  std::vector<std::string_view> marks(phones.size());
  if (std::ranges::count_if(phones, &Phone::isVowel) < 2) return marks;
  // Of several main stresses the last one is heard as such.
  const auto main =
      std::ranges::find(phones.rbegin(), phones.rend(), Stress::Primary, &Phone::stress);
  for (std::size_t i = 0; i < phones.size(); ++i)
    if (phones[i].stress != Stress::None)
      marks[syllableStart(phones, i)] = main != phones.rend() && &*main == &phones[i] ? "ˈ" : "ˌ";
  return marks;
}

struct DictionaryLine {
  std::string_view word;
  std::string_view phones;
};

std::string_view withoutQuotes(std::string_view text) {
  return text.size() > 1 && text.starts_with('"') ? text.substr(1, text.size() - 2) : text;
}

// `  "word": "W ER1 D # remark",`, the word with or without its quotes.
std::optional<DictionaryLine> splitLine(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  if (line.ends_with(',')) line.remove_suffix(1);
  const std::size_t colon = line.find(": \"");
  if (colon == std::string_view::npos || !line.ends_with('"')) return {};
  const std::string_view phones = withoutQuotes(line.substr(colon + 2));
  return DictionaryLine{withoutQuotes(line.substr(0, colon)), phones.substr(0, phones.find('#'))};
}

}  // namespace

std::optional<std::string> ipaOfPhones(std::string_view text) {
  const auto phones = readPhones(text);
  if (!phones) return {};
  const std::vector<std::string_view> marks = stressMarks(*phones);
  std::string ipa;
  for (std::size_t i = 0; i < phones->size(); ++i) ipa.append(marks[i]).append((*phones)[i].ipa);
  return ipa;
}

Pronunciations::Pronunciations(const std::filesystem::path& packages, const Tables& tables) {
  const std::filesystem::path path = packages / "cmu-pronouncing-dictionary/index.js";
  if (!std::filesystem::exists(path)) return;
  read(path);
  for (const auto& [word, ipa] : tables.pronunciations) ipa_[word] = ipa;
}

// Of several pronunciations, "word(2)" and so on, the first counts.
void Pronunciations::read(const std::filesystem::path& path) {
  const TextFile file(path);
  for (std::size_t line = 0; line < file.lines().size(); ++line) {
    const auto entry = splitLine(file.lines()[line]);
    if (!entry || !isPlain(entry->word)) continue;
    auto ipa = ipaOfPhones(entry->phones);
    if (!ipa) file.fail(line, "unknown phone in \"" + std::string(entry->phones) + "\"");
    ipa_.try_emplace(std::string(entry->word), std::move(*ipa));
  }
  if (ipa_.empty()) file.fail("no pronunciations here");
}

std::string Pronunciations::ipa(const std::string& word) const {
  const auto found = ipa_.find(word);
  return found == ipa_.end() ? "" : found->second;
}

}  // namespace quorvane::word_data
