#include "tools/scenario/Scenario.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>

#include "tools/scenario/World.h"

namespace quorvane::scenario {
namespace {

std::vector<Statement> parse(std::string_view text, const std::string& name, std::ostream& out,
                             bool& good) {
  std::vector<Statement> statements;
  for (std::size_t line = 1; !text.empty(); ++line) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    try {
      if (auto statement = parseLine(text.substr(0, end), line)) {
        statements.push_back(std::move(*statement));
      }
    } catch (const BadStatement& error) {
      out << name << ':' << line << ": " << text.substr(0, end) << "\n  " << error.what() << '\n';
      good = false;
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return statements;
}

void print(const Failure& failure, const std::string& name, std::ostream& out) {
  out << name << ':' << failure.line << ": " << failure.statement << '\n';
  if (failure.expected.empty() && !failure.found.empty()) {
    out << "  " << failure.found << '\n';
  } else {
    out << "  expected: " << failure.expected << "\n  found:    " << failure.found << '\n';
  }
}

// An exception that reached a key event: the key passes, but nobody expects it.
void keepErrors(World& world) {
  for (const std::string& error : world.host.text.errors()) {
    world.failures.push_back({0, "the text field reports", "", error});
  }
}

}  // namespace

int replayText(std::string_view text, const std::string& name, std::ostream& out) {
  bool good = true;
  const std::vector<Statement> statements = parse(text, name, out, good);
  if (!good) return kUnreadable;
  World world;
  for (const Statement& statement : statements) world.run(statement);
  keepErrors(world);
  for (const Failure& error : world.errors) print(error, name, out);
  for (const Failure& failure : world.failures) print(failure, name, out);
  if (!world.errors.empty()) return kUnreadable;
  if (!world.failures.empty()) return kDiffers;
  out << name << ": " << world.expectations << " expectations hold\n";
  return kHolds;
}

int replayFile(const std::string& path, std::ostream& out) {
  std::ifstream file(path, std::ios::binary);
  if (!file.is_open() || std::filesystem::is_directory(path)) {
    out << path << ": can't be read\n";
    return kUnreadable;
  }
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return replayText(text, path, out);
}

}  // namespace quorvane::scenario

namespace quorvane {

int replayFiles(const std::vector<std::string>& paths, std::ostream& out) {
  int worst = scenario::kHolds;
  for (const std::string& path : paths) worst = std::max(worst, scenario::replayFile(path, out));
  return worst;
}

}  // namespace quorvane
