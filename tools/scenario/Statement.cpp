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
constexpr std::size_t kMostKeys = 1'000'000;

std::optional<std::vector<Statement>> parseList(Words words, const Line& line,
                                                std::string_view lead);

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

bool takeKeystrokes(const Word& word, std::vector<Keystroke>& keys) {
  for (const char32_t character : word.literal) keys.push_back({character, 0});
  if (word.quoted) return true;
  return store(parseKeystroke(word.text), keys.emplace_back()) && keys.back().character != 0;
}

// `"th" down 2 times`.
bool takeKeys(Words& rest, const Line& line, Argument& argument) {
  for (std::size_t i = 0; i < rest.size(); ++i) {
    std::vector<Keystroke> item;
    if (!takeKeystrokes(rest[i], item)) return false;
    Argument times;
    times.number = 1;
    if (i + 2 < rest.size() && rest[i + 2].text == "times") {
      times.word = rest[i + 1].text;
      if (!takeNumber(*findNumberKind("COUNT"), line, times)) return false;
      i += 2;
    }
    if (static_cast<std::size_t>(times.number) * item.size() > kMostKeys) return false;
    for (; times.number > 0; --times.number) {
      std::ranges::copy(item, std::back_inserter(argument.keys));
    }
  }
  rest = rest.last(1);
  return true;
}

bool takeTexts(Words& rest, Argument& argument) {
  if (!std::ranges::all_of(rest, &Word::quoted)) return false;
  for (const Word& word : rest) argument.texts.push_back(word.literal);
  rest = rest.last(1);
  return true;
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
  auto statements = parseList(rest, line, {});
  if (!statements) return false;
  if (std::ranges::any_of(*statements, beginsAgain)) return false;
  argument.statements = std::move(*statements);
  rest = rest.last(1);
  return true;
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
  if (kind == "TEXTS") return takeTexts(rest, argument);
  if (kind == "KEYS") return takeKeys(rest, line, argument);
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

bool standsFor(const Word& word, std::string_view expected) {
  if (word.quoted) return false;
  return expected.ends_with(':') ? word.text + word.mark == expected : word.text == expected;
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
    } else if (!standsFor(rest.front(), expected)) {
      return std::nullopt;
    }
    rest = rest.subspan(1);
  }
  return rest.empty() ? std::optional(std::move(arguments)) : std::nullopt;
}

/// Whether what follows is the statements that this word announces.
bool announces(const Word& word) { return standsFor(word, "do:") || standsFor(word, "does:"); }

constexpr std::string_view kExpect = "expect ";

std::optional<Statement> parseOne(Words words, const Line& line, std::string_view lead = {}) {
  for (const Pattern* pattern : allPatterns()) {
    if (!pattern->words.starts_with(lead)) continue;
    if (auto arguments = match(pattern->words.substr(lead.size()), words, line)) {
      return Statement{.pattern = pattern,
                       .arguments = std::move(*arguments),
                       .line = line.number,
                       .source = std::string(line.source)};
    }
  }
  return std::nullopt;
}

// Divided by `,`. Those that another statement announces are its own, up to the end.
std::optional<std::vector<Statement>> parseList(Words words, const Line& line,
                                                std::string_view lead = {}) {
  std::vector<Statement> statements;
  while (!words.empty()) {
    std::size_t count = 0;
    while (count < words.size() && words[count].mark != ',' && !announces(words[count])) ++count;
    count = count == words.size() || announces(words[count]) ? words.size() : count + 1;
    auto statement = parseOne(words.first(count), line, lead);
    if (!statement) return std::nullopt;
    statements.push_back(std::move(*statement));
    words = words.subspan(count);
  }
  return statements;
}

bool isOneOf(const Statement& statement, std::span<const Pattern> patterns) {
  return std::ranges::any_of(patterns, [&](const Pattern& it) { return &it == statement.pattern; });
}

bool setsTheStage(const Statement& statement) {
  return isOneOf(statement, stagePatterns()) || isOneOf(statement, completionStagePatterns()) ||
         isOneOf(statement, menuStagePatterns()) || isOneOf(statement, fileStagePatterns()) ||
         isOneOf(statement, launchStagePatterns()) || beginsAgain(statement);
}

// One act with its expectations, or what sets the stage.
std::optional<std::vector<Statement>> parseAct(Words words, const Line& line) {
  const auto ends = [](const Word& word) { return word.mark == ':' || announces(word); };
  const auto end = std::ranges::find_if(words, ends);
  if (end == words.end() || announces(*end)) {
    auto stage = parseList(words, line);
    const bool fits = stage && (stage->size() == 1 || std::ranges::all_of(*stage, setsTheStage));
    return fits ? std::move(stage) : std::nullopt;
  }
  const auto count = static_cast<std::size_t>(std::distance(words.begin(), end)) + 1;
  auto act = parseOne(words.first(count), line);
  auto expectations = parseList(words.subspan(count), line, kExpect);
  if (!act || !expectations) return std::nullopt;
  act->watched = true;
  expectations->insert(expectations->begin(), std::move(*act));
  return expectations;
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
       {stagePatterns(), completionStagePatterns(), menuStagePatterns(), fileStagePatterns(),
        launchStagePatterns(), actPatterns(), menuPatterns(), filePatterns(), expectPatterns(),
        completionPatterns(), keyPatterns()}) {
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
  const bool expecting = standsFor(words.front(), "expect");
  auto statements =
      expecting ? parseList(Words(words).subspan(1), whole, kExpect) : parseAct(words, whole);
  if (statements && !statements->empty() && words.back().mark == 0) return std::move(*statements);
  throw BadStatement("no such statement" + objections + suggestions(words.front().text));
}

}  // namespace quorvane::scenario
