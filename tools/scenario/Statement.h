#pragma once
// Statements: what a line may say, and what it then does. The tables of the three kinds (Stage.cpp,
// Act.cpp, Expect.cpp), of word completion, of pressed keys and windows, of the menu and of
// files are the language.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/scenario/Words.h"

namespace quorvane::scenario {

class World;
struct Statement;

/// What stood in the place of one capital word of a pattern.
struct Argument {
  std::string word;
  Literal text;                       ///< TEXT
  std::int64_t number = 0;            ///< NUMBER and its kinds, HEX
  double measure = 0;                 ///< MEASURE, TIME
  Keystroke key;                      ///< KEY, MODIFIERS
  std::vector<Keystroke> keys;        ///< KEYS
  std::vector<Literal> texts;         ///< TEXTS
  std::vector<std::uint8_t> bytes;    ///< BYTES
  std::vector<Statement> statements;  ///< STATEMENTS

  [[nodiscard]] std::uint32_t u32() const { return static_cast<std::uint32_t>(number); }
};
using Arguments = std::vector<Argument>;

/// Words in small letters stand for themselves. Those in capitals stand for
///   TEXT "..."   HEX   NAME any word   KEY a keystroke   MODIFIERS those of one   RECORD two words
///   KEYS keystrokes and texts to the end   TEXTS   BYTES hexadecimal   STATEMENTS to the end
///   MEASURE a number with a fraction   TIME one that isn't negative   NUMBER a whole one
///   FIELD, ENTRY, BIT, BYTE, CODE, COORDINATE, PLACE, COUNT, SEGMENT whole ones with their bounds
struct Pattern {
  std::string_view words;
  void (*handler)(World&, const Arguments&);
};

struct Statement {
  const Pattern* pattern = nullptr;
  Arguments arguments;
  bool watched = false;  ///< its expectations stand behind it: the records begin with it
  std::size_t line = 0;
  std::string source;
};

std::span<const Pattern> stagePatterns();
std::span<const Pattern> actPatterns();
std::span<const Pattern> expectPatterns();
std::span<const Pattern> completionStagePatterns();
std::span<const Pattern> completionPatterns();
std::span<const Pattern> keyPatterns();
std::span<const Pattern> menuStagePatterns();
std::span<const Pattern> fileStagePatterns();
std::span<const Pattern> launchStagePatterns();
std::span<const Pattern> filePatterns();
std::span<const Pattern> menuPatterns();
/// Every pattern there is, in the order in which they are tried.
std::vector<const Pattern*> allPatterns();

/// `begin again`: what follows plays in a new world.
bool beginsAgain(const Statement& statement);

/// An act and, behind its `:`, what is expected of it; or what sets the stage; or `expect` and
/// expectations. `,` stands between several. Throws BadStatement.
std::vector<Statement> parseLine(std::string_view source, std::size_t line);

}  // namespace quorvane::scenario
