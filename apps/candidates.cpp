// `quorvane candidates`

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "apps/Command.h"
#include "apps/Utf8Input.h"
#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/FieldParts.h"
#include "src/base/Instance.h"
#include "src/base/Text.h"
#include "src/completion/ConversionEngine.h"

namespace quorvane {
namespace {

using Prefixes = std::vector<std::u16string>;

std::string listsFor(const Prefixes& prefixes, bool log) {
  field::FieldParts nowhere;
  desktop::DesktopHost host(desktop::DesktopConfiguration::fromEnvironment(),
                            nowhere.forPlatform());
  host.log().enabled = log;
  Instance instance(host.platform());
  ConversionEngine& engine = ConversionEngine::sharedEngine(instance);
  std::string lists;
  for (const std::u16string& prefix : prefixes) {
    if (&prefix != &prefixes.front()) lists += '\n';
    for (const std::u16string& word : engine.getCandidates(prefix)) lists += toUtf8(word) + '\n';
  }
  return lists;
}

int printCandidates(const std::vector<std::string>& arguments, bool log) {
  Prefixes prefixes;
  try {
    for (const std::string& argument : arguments) prefixes.push_back(toUtf16(decodeUtf8(argument)));
  } catch (const BadInput& error) {
    std::cerr << "quorvane candidates: " << error.what() << '\n';
    return kExitBadUsage;
  }
  writeAll(STDOUT_FILENO, listsFor(prefixes, log));
  return kExitDone;
}

}  // namespace

void addCandidatesCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "candidates", "Print what the candidates panel lists for what has been typed, one a line.");
  const auto prefixes = std::make_shared<std::vector<std::string>>();
  const auto log = std::make_shared<bool>(false);
  command->add_option("PREFIX", *prefixes, "What has been typed; an empty line divides the lists")
      ->required()
      ->option_text("...");
  command->add_flag("--log", *log, "Show the log on standard error");
  command->callback([&run, prefixes, log] {
    run = [prefixes, log] { return printCandidates(*prefixes, *log); };
  });
}

}  // namespace quorvane
