// `quorvane manual`: for the build, and shown to nobody.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "apps/Command.h"
#include "tools/manual/Completions.h"
#include "tools/manual/ManPages.h"

namespace quorvane {
namespace {

using std::filesystem::path;

void write(const path& file, const std::string& text) {
  std::filesystem::create_directories(file.parent_path());
  if (!(std::ofstream(file) << text << std::flush)) {
    throw std::runtime_error("can't write " + file.string());
  }
}

/// As they lie below the prefix of an installation.
int writeManual(const CLI::App& program, const path& prefix) {
  const path share = prefix / "share";
  for (const auto& [name, page] : manual::manPages(program, QUORVANE_VERSION)) {
    write(share / "man" / "man1" / name, page);
  }
  const std::string& name = program.get_name();
  write(share / "bash-completion" / "completions" / name, manual::bashCompletion(program));
  write(share / "zsh" / "vendor-completions" / ("_" + name), manual::zshCompletion(program));
  write(share / "fish" / "vendor_completions.d" / (name + ".fish"),
        manual::fishCompletion(program));
  return kExitDone;
}

}  // namespace

void addManualCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "manual", "Write manual pages and shell completions, as they are to be installed");
  command->group("");
  const auto folder = std::make_shared<std::string>();
  command->add_option("FOLDER", *folder, "The folder that stands for the prefix")->required();
  command->callback(
      [&app, &run, folder] { run = [&app, folder] { return writeManual(app, *folder); }; });
}

}  // namespace quorvane
