#include "tools/word_data/Glosses.h"

#include <algorithm>
#include <numeric>
#include <span>

#include "tools/word_data/Inflection.h"

namespace quorvane::word_data {
namespace {

constexpr std::size_t MostLines = 3;
constexpr std::size_t MostBytes = 120;
constexpr std::array<std::string_view, Parts.size()> Marks{"n. ", "v. ", "adj. ", "adv. "};

// A regular form that is a headword too ("received") counts as a form only of a much commoner and
// not too short word: "seed" is no form of "see".
constexpr int MuchCommoner = 10;
constexpr std::size_t ShortestCommoner = 4;

// Cut where a thought ends, or else where a word does.
std::string shortened(std::string text) {
  if (text.size() <= MostBytes) return text;
  const std::size_t thought = text.rfind("; ", MostBytes);
  if (thought != std::string::npos && thought >= MostBytes / 3) return text.substr(0, thought);
  std::size_t end = std::min(text.rfind(' ', MostBytes - 3), MostBytes - 3);
  while ((text[end] & 0xC0) == 0x80) --end;
  return text.substr(0, end) + "…";
}

template <typename Entries>
int totalCount(const Entries& entries) {
  return std::accumulate(entries.begin(), entries.end(), 0,
                         [](int sum, const auto& entry) { return sum + entry.sense->count; });
}

}  // namespace

std::string shownGloss(std::string_view gloss) {
  gloss = gloss.substr(0, gloss.find("; \""));
  if (gloss.starts_with('"')) gloss = {};
  while (gloss.ends_with(' ') || gloss.ends_with(';')) gloss.remove_suffix(1);
  std::string text(gloss);
  std::ranges::replace(text, '`', '\'');
  return shortened(std::move(text));
}

// The senses that the bases have as the part of speech that the form shows.
Glosses::Entries Glosses::baseEntries(const std::string& word,
                                      const std::vector<BaseForm>& bases) const {
  Entries found;
  for (const BaseForm& base : bases) {
    if (base.word == word) continue;
    for (const Sense& sense : dictionary_.senses(base.word))
      if (sense.part == base.part) found.push_back({&sense, base.word});
  }
  std::ranges::stable_sort(found, std::greater{},
                           [](const Entry& entry) { return entry.sense->count; });
  return found;
}

Glosses::Entries Glosses::entries(const std::string& word) const {
  Entries own;
  for (const Sense& sense : dictionary_.senses(word)) own.push_back({&sense, ""});
  const std::vector<BaseForm>& irregular = dictionary_.irregularBases(word);
  Entries base = baseEntries(word, irregular.empty() ? regularBases(word) : irregular);
  if (own.empty() || base.empty()) return own.empty() ? base : own;
  const bool longEnough = base.front().base.size() >= ShortestCommoner;
  const bool commoner = irregular.empty()
                            ? longEnough && totalCount(base) > MuchCommoner * totalCount(own)
                            : totalCount(base) > totalCount(own);
  if (commoner) own.insert(own.begin(), base.front());
  return own;
}

bool Glosses::isOffensive(const std::string& word) const {
  if (tables_.inoffensive.contains(word)) return false;
  if (tables_.isOffensive(word)) return true;
  const Entries all = entries(word);
  return !all.empty() && all.front().sense->offensive;
}

std::vector<std::string> Glosses::lines(const std::string& word) const {
  const auto ours = tables_.functionWords.find(word);
  if (ours != tables_.functionWords.end()) return ours->second;
  std::vector<std::string> lines;
  for (const Entry& entry : entries(word)) {
    const std::string gloss = shownGloss(entry.sense->gloss);
    if (gloss.empty() || lines.size() == MostLines) continue;
    std::string line(Marks[static_cast<std::size_t>(entry.sense->part)]);
    if (!entry.base.empty()) line += "(" + entry.base + ") ";
    lines.push_back(line + gloss);
  }
  return lines;
}

}  // namespace quorvane::word_data
