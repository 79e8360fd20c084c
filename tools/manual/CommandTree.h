#pragma once
// The commands of a program with their options, as its command line was described.

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace quorvane::manual {

/// What can be typed at a place of the command line.
struct Word {
  std::string name;
  std::string description;
  bool isOption = false;
};

struct Place {
  std::string path;  ///< of commands, such as "settings set"; empty: the program's own
  std::vector<Word> words;
};

/// The commands and the options that are meant to be seen.
std::vector<const CLI::App*> commandsOf(const CLI::App& command);
std::vector<const CLI::Option*> optionsOf(const CLI::App& command);

/// The program's own place, then those of its commands, theirs included.
std::vector<Place> placesOf(const CLI::App& program);

/// The first sentence, without its full stop.
std::string summaryOf(const std::string& description);

}  // namespace quorvane::manual
