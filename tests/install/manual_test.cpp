// Manual pages and completions of a program whose descriptions are awkward.

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <fstream>

#include "tests/support/RunningProgram.h"
#include "tools/manual/Completions.h"
#include "tools/manual/ManPages.h"

namespace quorvane::manual {
namespace {

void describe(CLI::App& program) {
  CLI::App* const set = program.add_subcommand("set", "Sets what's \\given. No more");
  set->add_flag("--really")->description(".so it is");
  set->add_subcommand("all", "All \"of\" `them`");
  program.add_subcommand("hidden", "Not shown")->group("");
}

TEST(Manual, BashCompletesWhatComesNext) {
  CLI::App program("Does it.", "prog");
  describe(program);
  const tests::OwnFolder folder;
  const auto file = folder.path() / "completion";
  std::ofstream(file) << bashCompletion(program)
                      << "try() { COMP_WORDS=(\"$@\") COMP_CWORD=$(($# - 1)); _prog; "
                         "echo \"${COMPREPLY[@]}\"; }\n"
                         "try prog ''; try prog -x set --; try prog set a; try prog all ''\n";
  const auto said = folder.path() / "said";
  EXPECT_EQ(std::system(("bash -u " + file.string() + " >" + said.string()).c_str()), 0);
  EXPECT_EQ(tests::contentOf(said), "set --help -h\n--help --really\nall\nset --help -h\n");
}

TEST(Manual, PagesHoldDescriptionsAsTheyAre) {
  CLI::App program("Does it.", "prog");
  describe(program);
  const auto pages = manPages(program, "1");
  EXPECT_EQ(pages.size(), 2U);
  const std::string& page = pages.at("prog-set.1");
  EXPECT_NE(page.find("prog\\-set \\- Sets what's \\egiven\n"), std::string::npos) << page;
  EXPECT_NE(page.find("\n\\&.so it is\n"), std::string::npos) << "no request: " << page;
}

}  // namespace
}  // namespace quorvane::manual
