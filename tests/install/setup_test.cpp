// What a setup does to a user's settings and files, and takes back.

#include <glib.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "tests/support/RunningProgram.h"
#include "tools/setup/SettingsList.h"
#include "tools/setup/Setup.h"

namespace quorvane::setup {
namespace {

using std::filesystem::path;
using Entries = std::vector<std::string>;

class Setup : public testing::Test {
 protected:
  Setup() {
    std::ofstream(write("ibus/simple.xml")) << "<name>xkb:us::eng</name>\n";
    list_.reset();
  }

  path write(const path& name) {
    const path file = home_.path() / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << "the user's";
    return file;
  }
  [[nodiscard]] std::set<path> everything() const {
    std::set<path> all;
    for (const auto& each : std::filesystem::recursive_directory_iterator(home_.path())) {
      all.insert(each.path());
    }
    return all;
  }

  // Settings in memory, chosen before the first of them is asked for.
  bool inMemory_ =
      g_setenv("GSETTINGS_BACKEND", "memory", TRUE) && g_setenv("QUORVANE_LAYOUT", "us", TRUE);
  tests::OwnFolder home_;
  Installation installation_{home_.path() / "prefix"};
  Surroundings surroundings_{home_.path() / "config", home_.path() / "config/quorvane/setup.ini",
                             home_.path() / "ibus", true};
  SettingsList list_{"org.freedesktop.ibus.general", "preload-engines"};
};

TEST_F(Setup, UndoTakesBackExactlyWhatWasDone) {
  write("config/environment.d/10-own.conf");
  const auto before = everything();
  const Report done = setUp(surroundings_, installation_);
  EXPECT_TRUE(done.problems.empty());
  EXPECT_TRUE(setUp(surroundings_, installation_).changes.empty()) << "a second time";
  const path units = home_.path() / "config/systemd/user";
  EXPECT_EQ(std::filesystem::read_symlink(units / "quorvane.service"), installation_.unit());
  EXPECT_EQ(list_.entries(), (Entries{"'xkb:us::eng'", "'quorvane'"}));

  EXPECT_EQ(takeBack(surroundings_).changes.size(), done.changes.size());
  EXPECT_EQ(everything(), before);
  EXPECT_FALSE(list_.isUsers());
  EXPECT_TRUE(takeBack(surroundings_).changes.empty());
}

TEST_F(Setup, WhatIsTheUsersStays) {
  const path unit = write("config/systemd/user/quorvane.service");
  list_.write({"'mozc-jp'"});
  EXPECT_EQ(setUp(surroundings_, installation_).problems.size(), 1U);
  const path mended = home_.path() / "config/environment.d/60-quorvane.conf";
  std::filesystem::remove(mended);
  write("config/environment.d/60-quorvane.conf");
  EXPECT_EQ(list_.entries(), (Entries{"'mozc-jp'", "'quorvane'"}));
  list_.write({"'quorvane'", "'anthy'", "'mozc-jp'"});
  takeBack(surroundings_);
  for (const path& file : {unit, mended}) EXPECT_EQ(tests::contentOf(file), "the user's") << file;
  EXPECT_EQ(list_.entries(), (Entries{"'anthy'", "'mozc-jp'"}));
}

TEST_F(Setup, NothingIsDoneThatCouldNotBeTakenBack) {
  surroundings_.record = write("config/quorvane") / "setup.ini";
  const auto before = everything();
  const Report done = setUp(surroundings_, installation_);
  EXPECT_TRUE(done.changes.empty());
  EXPECT_FALSE(done.problems.empty());
  EXPECT_EQ(everything(), before);
}

}  // namespace
}  // namespace quorvane::setup
