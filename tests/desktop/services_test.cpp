// Files that aren't files, folders of the environment, the dictionary.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <map>

#include "tests/support/DesktopStage.h"

namespace quorvane::desktop {
namespace {

using Texts = std::vector<std::u16string>;

TEST(DesktopFiles, NothingButAPlainFileIsTouched) {
  tests::DesktopStage stage;
  const auto home = stage.configuration().homeDirectory;
  std::filesystem::create_directory(home);
  ASSERT_EQ(mkfifo((home / "pipe").c_str(), 0600), 0);
  std::ofstream(home / "large").close();
  std::filesystem::resize_file(home / "large", FileManager::kLargestFile + 1);
  auto& files = stage.platform().fileManager;
  for (const auto& path :
       {(home / "pipe").string(), home.string(), std::string("/dev/zero"), std::string()}) {
    EXPECT_FALSE(files.attributesOfItemAtPath(path).has_value()) << path;
    EXPECT_EQ(files.dataWithContentsOfFile(path), nullptr) << path;
    EXPECT_EQ(files.dataWithContentsOfMappedFile(path), nullptr) << path;
  }
  EXPECT_EQ(files.dataWithContentsOfFile(home / "large"), nullptr);
  EXPECT_FALSE(files.writeToFile(home, {}));
  EXPECT_FALSE(files.writeToFile(home / "large" / "below", {}));
  const auto leftBy = [&home](std::int64_t pid) {
    return home / (".own." + std::to_string(pid) + ".new");
  };
  for (const pid_t pid : {INT32_MAX, getppid()}) std::ofstream(leftBy(pid)) << "left";
  ASSERT_TRUE(files.writeToFile(home / "own", {}));
  EXPECT_FALSE(std::filesystem::exists(leftBy(INT32_MAX))) << "nobody writes it any more";
  EXPECT_TRUE(std::filesystem::exists(leftBy(getppid())));
  EXPECT_EQ(std::filesystem::status(home / "own").permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST(DesktopBundle, KnowsTheFilesOfItsFolder) {
  tests::DesktopStage stage;
  const auto folder = stage.configuration().bundleDirectory;
  std::filesystem::create_directories(folder / "phonex.d");
  std::ofstream(folder / "phonex.js") << "1";
  auto& bundle = stage.platform().bundle;
  EXPECT_EQ(bundle.pathForResource("phonex", "js"), (folder / "phonex.js").string());
  EXPECT_FALSE(bundle.pathForResource("phonex", "d").has_value());
  EXPECT_FALSE(bundle.pathForResource("cedict", "json").has_value());
}

TEST(DesktopConfiguration, FoldersComeFromTheEnvironment) {
  std::map<std::string, std::string> variables{{"HOME", "/h"}};
  const auto configuration = [&] {
    return DesktopConfiguration::fromEnvironment([&](const char* name) -> const char* {
      const auto found = variables.find(name);
      return found == variables.end() ? nullptr : found->second.c_str();
    });
  };
  const auto program = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(configuration().homeDirectory, "/h");
  EXPECT_EQ(configuration().cacheDirectory, "/h/.cache/quorvane");
  const auto beside = program.parent_path().parent_path().string();
  EXPECT_TRUE(configuration().bundleDirectory.string().starts_with(beside));
  variables = {{"XDG_CONFIG_HOME", "/c"},
               {"XDG_CACHE_HOME", "/k"},
               {"QUORVANE_BUNDLE_DIR", "/b"},
               {"HOME", "relative"}};
  EXPECT_EQ(configuration().cacheDirectory, "/k/quorvane");
  EXPECT_EQ(configuration().bundleDirectory, "/b");
  EXPECT_TRUE(configuration().homeDirectory.is_absolute());
}

TEST(DesktopSpellChecker, GuessesForWordsOnly) {
  tests::DesktopStage stage;
  auto& checker = stage.platform().sharedSpellChecker;
  const auto guesses = [&](const std::u16string& text, NSRange range,
                           std::string_view language = "en") {
    return checker.guessesForWordRange(range, text, language, 0);
  };
  const Texts known = guesses(u"recieve", {0, 7});
  ASSERT_FALSE(known.empty());
  EXPECT_EQ(known.front(), u"receive");
  EXPECT_EQ(guesses(u"to recieve it", {3, 7}), known);
  EXPECT_LE(guesses(u"thot", {0, 4}).size(), 15U);
  EXPECT_EQ(guesses(u"recieve", {0, 7}, "xx_YY"), Texts{});
  EXPECT_EQ(guesses(u"recieve", {0, 7}, ""), Texts{});
  for (const NSRange range :
       {NSRange{0, 8}, NSRange{8, 0}, NSRange{7, 0}, NSRange{1, ~0ULL}, NSRange{NSNotFound, 1}}) {
    EXPECT_EQ(guesses(u"recieve", range), Texts{});
  }
  EXPECT_EQ(guesses({u'a', 0, u'b'}, {0, 3}), Texts{});
  EXPECT_EQ(guesses(u"reci\neve", {0, 8}), Texts{});
  EXPECT_EQ(guesses(std::u16string(100'000, u'q'), {0, 100'000}), Texts{});
  EXPECT_EQ(guesses(u"привет", {0, 6}), Texts{}) << "another script";
  guesses({u'a', 0xD800, u'b'}, {0, 3});
}

}  // namespace
}  // namespace quorvane::desktop
