// Learns what data/corrections holds, and shows what the decision does.

#include <CLI/CLI.hpp>
#include <iostream>
#include <optional>

#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/FieldParts.h"
#include "hosts/keyboard/StandardLayouts.h"
#include "tools/checker/Spelling.h"
#include "tools/corrections/Corrector.h"
#include "tools/corrections/tuning/Learning.h"
#include "tools/corrections/tuning/Reading.h"
#include "tools/corrections/tuning/Timing.h"

namespace quorvane::corrections {

namespace {

constexpr std::array<std::string_view, 7> kRuleNames{"none", "known",  "nothing", "floor",
                                                     "lead", "itself", "sure"};

/// The corrector in its surroundings, as the stand-in has it.
class Bench {
 public:
  Bench()
      : host_(desktop::DesktopConfiguration::fromEnvironment(), nowhere_.forPlatform()),
        platform_(host_.platform()) {
    corrector_ = Corrector::open(platform_);
    if (!corrector_) throw std::runtime_error("no word data: run scripts/word_data");
    if (!dictionaries_) throw std::runtime_error("Enchant has no dictionary for en_US");
    corrector_->setNeighbours(KeyNeighbours(*keyboard::usLayout()));
  }

  bool accepts(const std::string& word) { return dictionaries_->accepts(word); }
  Judgement judge(const std::string& word, Writing writing) {
    return corrector_->judge(word, writing, [this](const std::string& w) { return accepts(w); });
  }

 private:
  field::FieldParts nowhere_;
  desktop::DesktopHost host_;
  Platform platform_;
  std::unique_ptr<Corrector> corrector_;
  std::unique_ptr<checker::Spelling> dictionaries_ = checker::openDictionaries("en_US");
};

/// One line for a word that isn't known: what is judged of it, and on what grounds.
void tell(const std::string& source, const TextWord& word, const std::string& meant,
          std::size_t count, const Judgement& judgement) {
  std::cout << source << '\t' << word.word << '\t' << meant << '\t' << count << '\t'
            << static_cast<int>(word.writing) << '\t'
            << kRuleNames[static_cast<std::size_t>(judgement.rule)];
  if (!judgement.ranked.empty()) {
    std::cout << '\t' << judgement.ranked.front().word << '\t' << judgement.ranked.front().score
              << '\t' << judgement.lead() << '\t' << judgement.doubtful << '\t'
              << judgement.needed.floor << '\t' << judgement.needed.lead;
  }
  std::cout << '\n';
}

void judgePairs(Bench& bench, const std::string& file) {
  for (const Pair& pair : parsePairs(fileText(file))) {
    Judgement judgement = bench.judge(pair.typed, Writing::Small);
    if (bench.accepts(pair.typed)) judgement.rule = Rule::Known;
    tell("pairs", {pair.typed}, pair.meant, 1, judgement);
  }
}

void judgeText(Bench& bench, const std::filesystem::path& file) {
  const Reading reading = readWords(fileText(file));
  const std::string source = (file.parent_path().filename() / file.stem()).string();
  std::cout << "words\t" << source << '\t' << reading.words << '\n';
  for (const auto& [word, count] : reading.checked) {
    const Judgement judgement = bench.judge(word.word, word.writing);
    if (judgement.rule <= Rule::Known || bench.accepts(word.word)) continue;
    tell(source, word, "", count, judgement);
  }
}

/// The words typed of pairs, and those of texts.
void timeWords(Bench& bench, const std::string& pairs, const std::vector<std::string>& texts,
               std::size_t random) {
  std::vector<std::string> words;
  if (!pairs.empty()) {
    for (const Pair& pair : parsePairs(fileText(pairs))) words.push_back(pair.typed);
  }
  for (const std::string& text : texts) {
    for (const auto& [word, count] : readWords(fileText(text)).checked) words.push_back(word.word);
  }
  addRandomWords(words, random);
  tellCosts(words, [&bench](const std::string& word) { bench.judge(word, Writing::Small); });
}

int run(int argc, char** argv) {
  CLI::App options("Learns and shows what corrections are made of.");
  options.require_subcommand(1);
  std::string pairs;
  std::vector<std::string> texts;
  CLI::App& learn = *options.add_subcommand("learn", "Prints weights learned from pairs");
  learn.add_option("PAIRS", pairs, "Lines typed<TAB>meant")->required();
  CLI::App& judge = *options.add_subcommand("judge", "Prints a line for each word in question");
  std::size_t random = 0;
  CLI::App& time = *options.add_subcommand("time", "Prints what the decision costs");
  time.add_option("--random", random, "So many words more, random ones and mixtures");
  for (CLI::App* const command : {&judge, &time}) {
    command->add_option("--pairs", pairs, "Lines typed<TAB>meant");
    command->add_option("TEXT", texts, "Files of text");
  }
  try {
    options.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return options.exit(error) == 0 ? 0 : 2;
  }
  if (learn.parsed()) {
    std::cout << learnedWeights(parsePairs(fileText(pairs)), KeyNeighbours(*keyboard::usLayout()));
    return 0;
  }
  Bench bench;
  if (time.parsed()) {
    timeWords(bench, pairs, texts, random);
    return 0;
  }
  if (!pairs.empty()) judgePairs(bench, pairs);
  for (const std::string& text : texts) judgeText(bench, text);
  return 0;
}

}  // namespace

}  // namespace quorvane::corrections

int main(int argc, char** argv) {
  try {
    return quorvane::corrections::run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "quorvane_tuning: " << error.what() << '\n';
    return 1;
  }
}
