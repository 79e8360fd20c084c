// Resource files that several processes write, and that die while they do.

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <functional>
#include <random>
#include <thread>

#include "hosts/desktop/FileManager.h"
#include "hosts/desktop/ResourceManager.h"
#include "tests/support/RunningProgram.h"
#include "tools/parameters/disk/ParameterFileOnDisk.h"

namespace quorvane::desktop {
namespace {

constexpr FourCharCode kTable = "CGMI"_4cc;

struct NoLog : quorvane::LogSink {
  void writeLine(std::string_view /*line*/) override {}
};

/// One process's view of the parameter file.
struct View {
  explicit View(const std::filesystem::path& support)
      : files({}, {}, {{"file"_4cc, support / parameters::kFolder / parameters::kFile}}, log),
        resources(files, {}, log) {}

  /// Runs `work` on the table, with the file open. True: what it has changed is written.
  bool withTable(const std::function<void(const Handle&)>& work) {
    FSRef file;
    files.FSFindFolder(kUserDomain, "file"_4cc, file);
    const std::int32_t refNum = resources.FSOpenResFile(file, fsRdWrShPerm);
    work(resources.Get1Resource(kTable, 8889));
    resources.CloseResFile(refNum);
    return resources.ResError() == noErr;
  }

  NoLog log;
  FileManager files;
  ResourceManager resources;
};

/// A child that runs `work` and ends.
pid_t start(const std::function<void()>& work) {
  const pid_t pid = fork();
  if (pid != 0) return pid;
  work();
  _exit(0);
}

struct ResourceFilesOfTwo : testing::Test {
  tests::OwnFolder folder;
  void change(const std::function<void(resources::ResourceFork&)>& work) {
    parameters::changeParameterFile(folder.path(), work);
  }
};

TEST_F(ResourceFilesOfTwo, LoseNoRecordOfEachOther) {
  constexpr int kRecords = 100;
  change([](auto& fork) { fork.at(kTable, 8889); });
  const pid_t child = start([&] {
    View view(folder.path());
    const auto add = [&](const Handle& table) {
      table->content.push_back(1);
      view.resources.ChangedResource(table);
    };
    for (int i = 0; i < kRecords;) i += view.withTable(add) ? 1 : 0;
  });
  for (int i = 0; i < kRecords; ++i) {
    change([](auto& fork) {
      fork.at(kTable, 8889).data.push_back(2);
      fork.at("Else"_4cc, 1).data.push_back(1);
    });
  }
  waitpid(child, nullptr, 0);
  change([&](const auto& fork) {
    EXPECT_EQ(fork.find(kTable, 8889)->data.size(), std::size_t{2 * kRecords});
    EXPECT_EQ(fork.find("Else"_4cc, 1)->data.size(), std::size_t{kRecords});
  });
}

TEST_F(ResourceFilesOfTwo, OneThatHoldsTheLockHoldsNoKeyUp) {
  change([](auto& fork) { fork.at(kTable, 8889).data = {1}; });
  const auto lock = lockAppleDouble(folder.path() / parameters::kFolder / parameters::kFile, {});
  View view(folder.path());
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(view.withTable([&](const Handle& table) {
    EXPECT_EQ(table->content, std::vector<std::uint8_t>{1});
    view.resources.ChangedResource(table);
  }));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(250));
}

/// One that is killed holds nobody up, and leaves the old word or the new.
TEST_F(ResourceFilesOfTwo, AKillAtAnyMomentLeavesAWholeFile) {
  constexpr int kToggles = 1000;
  using Word = std::vector<std::uint8_t>;
  const Word a(40'000, 0xAA);
  const Word b(40'040, 0x55);
  change([&](auto& fork) { fork.at(kTable, 8889).data = a; });
  auto* const toggles =
      static_cast<std::atomic<int>*>(mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE,
                                          MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  std::minstd_rand random(7);
  while (toggles->load() < kToggles) {
    const int before = toggles->load();
    const pid_t child = start([&] {
      View view(folder.path());
      for (;; ++*toggles) {
        view.withTable([&](const Handle& table) {
          table->content = table->content == a ? b : a;
          view.resources.ChangedResource(table);
        });
      }
    });
    while (toggles->load() < before + 20) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 3000));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    change([&](const auto& fork) {
      const Word& now = fork.find(kTable, 8889)->data;
      EXPECT_TRUE(now == a || now == b);
    });
  }
  munmap(toggles, sizeof(std::atomic<int>));
}

}  // namespace
}  // namespace quorvane::desktop
