#include "tools/scenario/Statement.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace quorvane::scenario {
namespace {

using Words = std::span<const Word>;

struct Line {
  std::string_view source;
  std::size_t number;
  std::string& objections;  ///< to numbers that are out of bounds where one may stand
};

struct NumberKind {
  std::string_view name;
  std::int64_t from, to;
};
constexpr std::array<NumberKind, 10> kNumberKinds{{
    {"NUMBER", -0x80000000LL, 0xFFFFFFFF},
    {"FIELD", 0, 54},
    {"ENTRY", 0, 7},
    {"BIT", 0, 31},
    {"BYTE", 0, 255},
    {"CODE", 0, 0xFFFF},
    {"COORDINATE", -0x8000, 0x7FFF},
    {"PLACE", 0, 1'000'000},
    {"COUNT", 1, 1'000'000},
    {"SEGMENT", 880, 899},
}};
constexpr std::array<std::int64_t, 5> kSegments{880, 893, 896, 897, 899};
constexpr double kLargestMeasure = 1e6;

std::optional<std::vector<Statement>> parseStatements(Words words, const Line& line);

// A function for each word in capitals: takes its words off `rest`; false: they are of another
// kind.

bool takeText(Words& rest, Argument& argument) {
  if (!rest.front().quoted) return false;
  argument.text = rest.front().literal;
  return true;
}

template <class Parsed, class Value>
bool store(const std::optional<Parsed>& parsed, Value& value) {
  if (parsed) value = *parsed;
  return parsed.has_value();
}

bool takeBytes(Words& rest, Argument& argument) {
  for (const Word& word : rest) {
    const auto byte = parseHex(word.text);
    if (!byte || word.quoted || word.text.size() != 2) return false;
    argument.bytes.push_back(static_cast<std::uint8_t>(*byte));
  }
  rest = rest.last(1);
  return true;
}

bool takeRecord(Words& rest, Argument& argument) {
  if (rest.size() < 2 || rest[1].quoted) return false;
  argument.word += " " + rest[1].text;
  rest = rest.subspan(1);
  return true;
}

bool takeStatements(Words& rest, const Line& line, Argument& argument) {
  auto statements = parseStatements(rest, line);
  if (!statements) return false;
  if (std::ranges::any_of(*statements, beginsAgain)) return false;
  argument.statements = std::move(*statements);
  rest = rest.last(1);
  return true;
}

const NumberKind* findNumberKind(std::string_view name) {
  const auto* found = std::ranges::find(kNumberKinds, name, &NumberKind::name);
  return found == kNumberKinds.end() ? nullptr : found;
}

bool takeNumber(const NumberKind& kind, const Line& line, Argument& argument) {
  if (!store(parseNumber(argument.word), argument.number)) return false;
  const bool known =
      kind.name != "SEGMENT" || std::ranges::find(kSegments, argument.number) != kSegments.end();
  if (known && argument.number >= kind.from && argument.number <= kind.to) return true;
  const std::string objection = "\n  " + argument.word + " is no " + std::string(kind.name);
  if (line.objections.find(objection) == std::string::npos) line.objections += objection;
  return false;
}

bool takeMeasure(double least, Argument& argument) {
  return store(parseMeasure(argument.word), argument.measure) && argument.measure >= least &&
         argument.measure <= kLargestMeasure;
}

bool takeKey(bool modifiersAlone, Argument& argument) {
  return store(parseKeystroke(argument.word), argument.key) &&
         (argument.key.character == 0) == modifiersAlone;
}

bool takePlaceholder(std::string_view kind, Words& rest, const Line& line, Argument& argument) {
  const Word& word = rest.front();
  argument.word = word.text;
  if (kind == "TEXT") return takeText(rest, argument);
  if (word.quoted) return false;
  if (const NumberKind* number = findNumberKind(kind)) return takeNumber(*number, line, argument);
  if (kind == "HEX") return store(parseHex(word.text), argument.number);
  if (kind == "MEASURE") return takeMeasure(-kLargestMeasure, argument);
  if (kind == "TIME") return takeMeasure(0, argument);
  if (kind == "KEY") return takeKey(false, argument);
  if (kind == "MODIFIERS") return takeKey(true, argument);
  if (kind == "BYTES") return takeBytes(rest, argument);
  if (kind == "RECORD") return takeRecord(rest, argument);
  if (kind == "STATEMENTS") return takeStatements(rest, line, argument);
  return kind == "NAME";
}

bool isPlaceholder(std::string_view word) {
  return std::all_of(word.begin(), word.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

std::optional<Arguments> match(std::string_view pattern, Words rest, const Line& line) {
  Arguments arguments;
  while (!pattern.empty()) {
    const std::size_t space = std::min(pattern.find(' '), pattern.size());
    const std::string_view expected = pattern.substr(0, space);
    pattern.remove_prefix(std::min(space + 1, pattern.size()));
    if (rest.empty()) return std::nullopt;
    if (isPlaceholder(expected)) {
      if (!takePlaceholder(expected, rest, line, arguments.emplace_back())) return std::nullopt;
    } else if (rest.front().quoted || rest.front().text != expected) {
      return std::nullopt;
    }
    rest = rest.subspan(1);
  }
  return rest.empty() ? std::optional(std::move(arguments)) : std::nullopt;
}

std::optional<Statement> parseOne(Words words, const Line& line) {
  for (const Pattern* pattern : allPatterns()) {
    if (auto arguments = match(pattern->words, words, line)) {
      return Statement{pattern, std::move(*arguments), line.number, std::string(line.source)};
    }
  }
  return std::nullopt;
}

std::optional<std::vector<Statement>> parseStatements(Words words, const Line& line) {
  std::vector<Statement> statements;
  while (!words.empty()) {
    const auto isEnd = [](const Word& word) { return !word.quoted && word.text == ";"; };
    const auto end = std::find_if(words.begin(), words.end(), isEnd);
    const auto count = static_cast<std::size_t>(std::distance(words.begin(), end));
    auto statement = parseOne(words.first(count), line);
    if (!statement) return std::nullopt;
    statements.push_back(std::move(*statement));
    words = words.subspan(std::min(count + 1, words.size()));
  }
  return statements;
}

// What the writer may have meant: the patterns that begin with the same word.
std::string suggestions(std::string_view firstWord) {
  std::string text;
  for (const Pattern* pattern : allPatterns()) {
    if (pattern->words.substr(0, pattern->words.find(' ')) == firstWord) {
      text += "\n  known: " + std::string(pattern->words);
    }
  }
  return text;
}

}  // namespace

std::vector<const Pattern*> allPatterns() {
  std::vector<const Pattern*> patterns;
  for (const auto table :
       {stagePatterns(), actPatterns(), expectPatterns(), completionPatterns(), keyPatterns()}) {
    for (const Pattern& pattern : table) patterns.push_back(&pattern);
  }
  return patterns;
}

bool beginsAgain(const Statement& statement) { return statement.pattern->words == "begin again"; }

std::vector<Statement> parseLine(std::string_view source, std::size_t line) {
  const std::vector<Word> words = splitWords(source);
  if (words.empty()) return {};
  std::string objections;
  const Line whole{source, line, objections};
  // A statement that holds statements has the rest of its line.
  if (auto statement = parseOne(words, whole)) return {std::move(*statement)};
  if (auto statements = parseStatements(words, whole)) return std::move(*statements);
  throw BadStatement("no such statement" + objections + suggestions(words.front().text));
}

}  // namespace quorvane::scenario
