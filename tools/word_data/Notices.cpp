#include "tools/word_data/Notices.h"

#include <vector>

#include "tools/word_data/TextFile.h"

namespace quorvane::word_data {
namespace {

const std::string Rule = "\n" + std::string(80, '-') + "\n\n";

std::string section(const std::filesystem::path& ours,
                    const std::vector<std::filesystem::path>& theirs) {
  std::string text = Rule + TextFile(ours).text();
  for (const auto& path : theirs) text += TextFile(path).text() + "\n";
  return text;
}

}  // namespace

std::string notices(const NoticePlaces& places, const PackagesUsed& used) {
  const auto ours = places.tables / "notices";
  std::string text = TextFile(ours / "head.txt").text();
  text += section(ours / "scowl.txt", {places.documentation / "scowl/copyright"});
  text += section(ours / "wordnet.txt", {places.documentation / "wordnet-base/copyright"});
  if (used.subtitles) {
    const auto package = places.packages / "@zxcvbn-ts/language-en";
    text += section(
        ours / "subtitles.txt",
        {package / "NOTICE.md", package / "THIRD_PARTY_LICENSES.md", package / "LICENSE.txt"});
  }
  if (used.books)
    text += section(ours / "books.txt", {places.packages / "norvig-frequencies/README.md"});
  if (used.pronunciations)
    text += section(ours / "cmudict.txt", {places.packages / "cmu-pronouncing-dictionary/license"});
  return text;
}

}  // namespace quorvane::word_data
