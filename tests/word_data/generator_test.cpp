#include "tools/word_data/Generator.h"

#include <marisa.h>

#include "hosts/script/DuktapeScriptHost.h"
#include "tests/word_data/SmallWordNet.h"
#include "tools/word_data/OutputFolder.h"

namespace quorvane::word_data {
namespace {

const char* const Names[] = {"google_227800_words.bin", "frequency_and_ipa.json",
                             "phonex_encoded_words.json", "phonex.js", "DATA-NOTICES.txt"};

std::string contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class Generator : public testing::Test {
 protected:
  Generator() {
    folder.write("scowl/english-words.10", "the\ngo\nx\n");
    folder.write("scowl/english-upper.10", "II\nOtto\n");
    folder.write("scowl/special-roman-numerals.35", "ii\n");
    SmallWordNet wordnet;
    wordnet.add("verb", "go", {"move \\ \"travel\"\x01"});
    wordnet.write(folder, "wordnet/");
    for (const auto* name : {"scowl", "wordnet-base"})
      folder.write(std::string("doc/") + name + "/copyright",
                   std::string("The ") + name + " terms");
    const std::string subtitles = "packages/@zxcvbn-ts/language-en/";
    folder.write(subtitles + "src/commonWords.json", R"(["go","the"])");
    for (const auto* name : {"NOTICE.md", "THIRD_PARTY_LICENSES.md", "LICENSE.txt"})
      folder.write(subtitles + name, name);
    folder.write("packages/cmu-pronouncing-dictionary/index.js", "  \"go\": \"G OW1\",\n");
    folder.write("packages/cmu-pronouncing-dictionary/license", "a licence");
  }

  Report run(const std::string& output, const std::string& packages = "packages") {
    return generate({folder.path() / "scowl", folder.path() / "wordnet", folder.path() / "doc",
                     folder.path() / packages, QUORVANE_SOURCE_DIR "/data", folder.path() / output},
                    scripts);
  }
  std::string made(const std::string& output, const char* name) {
    return contents(folder.path() / output / name);
  }

  SourceFolder folder;
  DuktapeScriptHost scripts;
};

TEST_F(Generator, MakesTheSameFilesTwice) {
  const Report report = run("one");
  run("two");
  run("two");
  for (const auto* name : Names) EXPECT_EQ(made("one", name), made("two", name)) << name;
  EXPECT_EQ(made("one", "frequency_and_ipa.json"),
            "{\"go\":{\"frequency\":26098419,\"translation\":[\"v. move \\\\ "
            "\\\"travel\\\"\\u0001\"],\"ipa\":\"ɡoʊ\"},\n"
            "\"the\":{\"frequency\":24204148,\"translation\":[\"det. the one known or named "
            "before\"],\"ipa\":\"\"}}\n");
  EXPECT_EQ(made("one", "phonex_encoded_words.json"), "{\"G000\":[\"go\"],\n\"T000\":[\"the\"]}\n");
  marisa::Trie trie;
  trie.load((folder.path() / "one/google_227800_words.bin").c_str());
  EXPECT_EQ(trie.num_keys(), 2U);
  const std::string saved = made("one", "google_227800_words.bin");
  EXPECT_EQ(saved.substr(saved.size() - 16, 8), "\nSealed\n");
  const std::string notices = made("one", "DATA-NOTICES.txt");
  for (const auto* text : {"The scowl terms", "The wordnet-base terms", "OpenSubtitles 2024",
                           "NOTICE.md", "CARNEGIE MELLON UNIVERSITY"})
    EXPECT_NE(notices.find(text), std::string::npos) << text;
  EXPECT_EQ(notices.find("Ngram"), std::string::npos) << "that list was not there";
  EXPECT_FALSE(report.isComplete());
}

TEST_F(Generator, DoesWithoutPackages) {
  const Report report = run("plain", "missing");
  EXPECT_FALSE(report.subtitles || report.books || report.pronunciations);
  EXPECT_EQ(made("plain", "frequency_and_ipa.json").find("{\"go\":{\"frequency\":9,"), 0U)
      << made("plain", "frequency_and_ipa.json");
  EXPECT_NE(made("plain", "frequency_and_ipa.json").find("\"otto\""), std::string::npos);
  EXPECT_EQ(made("plain", "frequency_and_ipa.json").find("\"ii\""), std::string::npos);
}

TEST_F(Generator, LeavesTheOldFolderWhereItFails) {
  run("one");
  const std::string before = made("one", "frequency_and_ipa.json");
  folder.write("scowl/english-words.20", "more\n");
  folder.write("doc/scowl/copyright", "\xff");
  EXPECT_NE(sourceError([&] { run("one"); }), "");
  EXPECT_EQ(made("one", "frequency_and_ipa.json"), before);
  std::size_t folders = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
    folders += entry.path().filename().string().starts_with("one") ? 1 : 0;
  EXPECT_EQ(folders, 1U) << "something half made stays";
}

}  // namespace
}  // namespace quorvane::word_data
