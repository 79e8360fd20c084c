#include "tools/scenario/Scenario.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <span>

#include "tools/scenario/World.h"

namespace quorvane::scenario {
namespace {

constexpr std::size_t kLargestFile = 16'000'000;

std::vector<Statement> parse(std::string_view text, const std::string& name, std::ostream& out,
                             bool& good) {
  std::vector<Statement> statements;
  for (std::size_t line = 1; !text.empty(); ++line) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    try {
      std::ranges::move(parseLine(text.substr(0, end), line), std::back_inserter(statements));
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

/// What came of all stages of a file.
struct Outcomes {
  std::vector<Failure> failures, errors;
  std::size_t expectations = 0;
};

void append(std::vector<Failure>& all, const std::vector<Failure>& more) {
  all.insert(all.end(), more.begin(), more.end());
}

/// Up to the end, or to the next `begin again`, which is left to the next stage.
std::span<const Statement> runStage(std::span<const Statement> statements, Outcomes& outcomes) {
  World world;
  std::size_t done = 0;
  do {
    world.run(statements[done++]);
  } while (done < statements.size() && !beginsAgain(statements[done]));
  world.keepUnexpected();
  append(outcomes.failures, world.failures);
  append(outcomes.errors, world.errors);
  outcomes.expectations += world.expectations;
  return statements.subspan(done);
}

}  // namespace

int replayText(std::string_view text, const std::string& name, std::ostream& out) {
  bool good = true;
  const std::vector<Statement> statements = parse(text, name, out, good);
  if (!good) return kUnreadable;
  Outcomes outcomes;
  for (std::span<const Statement> rest(statements); !rest.empty();) {
    rest = runStage(rest, outcomes);
  }
  for (const Failure& error : outcomes.errors) print(error, name, out);
  for (const Failure& failure : outcomes.failures) print(failure, name, out);
  if (!outcomes.errors.empty()) return kUnreadable;
  if (!outcomes.failures.empty()) return kDiffers;
  out << name << ": " << outcomes.expectations << " expectations hold\n";
  return kHolds;
}

int replayFile(const std::string& path, std::ostream& out) {
  std::ifstream file(path, std::ios::binary);
  if (!file.is_open() || std::filesystem::is_directory(path)) {
    out << path << ": can't be read\n";
    return kUnreadable;
  }
  std::string text(kLargestFile + 1, '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(file.gcount()));
  if (text.size() <= kLargestFile) return replayText(text, path, out);
  out << path << ": too long\n";
  return kUnreadable;
}

}  // namespace quorvane::scenario

namespace quorvane {

int replayFiles(const std::vector<std::string>& paths, std::ostream& out) {
  int worst = scenario::kHolds;
  for (const std::string& path : paths) worst = std::max(worst, scenario::replayFile(path, out));
  return worst;
}

}  // namespace quorvane
