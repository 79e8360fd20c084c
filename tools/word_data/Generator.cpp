#include "tools/word_data/Generator.h"

#include <algorithm>
#include <iterator>

#include "tools/word_data/Notices.h"
#include "tools/word_data/OutputFolder.h"
#include "tools/word_data/TextFile.h"
#include "tools/word_data/Writer.h"

namespace quorvane::word_data {
namespace {

void noteSources(Report& report, const RankLists& ranks, const Pronunciations& pronunciations) {
  report.subtitles = !ranks.subtitles.empty();
  report.books = !ranks.books.empty();
  report.pronunciations = !pronunciations.isEmpty();
}

void noteWords(Report& report, const std::vector<Word>& words, const Frequencies& frequencies) {
  report.words = words.size();
  report.attested = static_cast<std::size_t>(std::ranges::count_if(
      words, [&](const Word& word) { return frequencies.isAttested(word.text); }));
}

void noteGroups(Report& report, const CodeGroups& groups) {
  report.codes = groups.size();
  for (const auto& [code, words] : groups)
    report.largestGroup = std::max(report.largestGroup, words.size());
}

}  // namespace

Report generate(const Places& places, ScriptHost& scripts) {
  Report report;
  const Tables tables = readTables(places.tables);
  const RankLists ranks = readRankLists(places.packages);
  const Pronunciations pronunciations(places.packages, tables);
  noteSources(report, ranks, pronunciations);

  const WordNet dictionary(places.wordnet);
  const Frequencies frequencies(ranks, tables);
  const Glosses glosses(dictionary, tables);
  const Candidates candidates = readScowl(places.scowl);
  const WordTest isDefined = [&](const auto& word) { return !dictionary.senses(word).empty(); };
  const WordTest isOffensive = [&](const auto& word) { return glosses.isOffensive(word); };
  const std::vector<Word> words = selectWords(candidates, ranks, tables, isDefined, isOffensive);
  noteWords(report, words, frequencies);

  const TextFile script(places.tables / "phonex.js");
  Phonex phonex(scripts, script.text());
  const CodeGroups groups = groupByCode(phonex, words);
  noteGroups(report, groups);
  std::vector<Word> known;
  std::ranges::merge(words, offensiveWords(candidates, isOffensive), std::back_inserter(known), {},
                     &Word::text, &Word::text);
  const WordTable table = wordTable(known, glosses, pronunciations);
  report.defined = table.defined;
  report.pronounced = table.pronounced;

  OutputFolder output(places.output);
  output.write("google_227800_words.bin", sealedTrie(words));
  output.write("frequency_and_ipa.json", table.json);
  output.write("phonex_encoded_words.json", codeTable(groups));
  output.write("phonex.js", script.text());
  output.write("DATA-NOTICES.txt",
               notices({places.tables, places.documentation, places.packages},
                       {report.subtitles, report.books, report.pronunciations}));
  output.finish();
  return report;
}

}  // namespace quorvane::word_data
