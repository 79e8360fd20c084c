#include "tools/scenario/Statement.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace quorvane::scenario {
namespace {

using Words = std::span<const Word>;

struct Line {
  std::string_view source;
  std::size_t number;
};

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
    if (!byte || *byte > 0xFF) return false;
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
  argument.statements = std::move(*statements);
  rest = rest.last(1);
  return true;
}

bool takePlaceholder(std::string_view kind, Words& rest, const Line& line, Argument& argument) {
  const Word& word = rest.front();
  argument.word = word.text;
  if (kind == "TEXT") return takeText(rest, argument);
  if (word.quoted) return false;
  if (kind == "NUMBER") return store(parseNumber(word.text), argument.number);
  if (kind == "HEX") return store(parseHex(word.text), argument.number);
  if (kind == "MEASURE") return store(parseMeasure(word.text), argument.measure);
  if (kind == "KEY") return store(parseKeystroke(word.text), argument.key);
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
  // A statement that holds statements has the rest of its line.
  if (auto statement = parseOne(words, {source, line})) return {std::move(*statement)};
  if (auto statements = parseStatements(words, {source, line})) return std::move(*statements);
  throw BadStatement("no such statement" + suggestions(words.front().text));
}

}  // namespace quorvane::scenario
