// Makes the word data of completion from Debian and npm packages: see docs/word-data.md.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "hosts/script/DuktapeScriptHost.h"
#include "tools/word_data/Generator.h"

namespace {

using quorvane::word_data::Places;
using quorvane::word_data::Report;

void addOptions(CLI::App& options, Places& places) {
  options.add_option("--scowl", places.scowl, "Folder of SCOWL's lists")->capture_default_str();
  options.add_option("--wordnet", places.wordnet, "Folder of WordNet's files")
      ->capture_default_str();
  options
      .add_option("--documentation", places.documentation, "Folder of packages' copyright files")
      ->capture_default_str();
  options.add_option("--packages", places.packages, "node_modules folder; may be missing");
  options.add_option("--tables", places.tables, "Folder of our own tables")->capture_default_str();
  options.add_option("--output", places.output, "Folder to make")->capture_default_str();
}

void sayMissing(const Report& report) {
  if (!report.subtitles && !report.books)
    std::cout << "No rank lists: how common a word is comes from the word lists' levels alone.\n";
  else if (!report.subtitles || !report.books)
    std::cout << "No ranks from " << (report.books ? "subtitles" : "books") << ".\n";
  if (!report.pronunciations) std::cout << "No pronouncing dictionary: no phonetic symbols.\n";
}

void say(const Report& report) {
  sayMissing(report);
  std::cout << report.words << " words: " << report.attested << " with a rank, " << report.defined
            << " with a definition, " << report.pronounced << " with phonetic symbols; "
            << report.codes << " phonetic codes, at most " << report.largestGroup
            << " words each\n";
}

int run(int argc, char** argv) {
  CLI::App options("Makes the word data of completion.");
  Places places;
  addOptions(options, places);
  try {
    options.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return options.exit(error) == 0 ? 0 : 2;
  }
  quorvane::DuktapeScriptHost scripts;
  say(generate(places, scripts));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "quorvane_word_data: " << error.what() << '\n';
    return 1;
  }
}
