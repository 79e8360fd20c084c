// The loading of the word data. The JSON files are the truth; what was made of them is kept in
// snapshots, which are made anew whenever one of the files is another one than it was.

#include "src/base/Log.h"
#include "src/base/Text.h"
#include "src/completion/ConversionEngine.h"
#include "src/completion/NewWordTable.h"
#include "src/completion/SnapshotFile.h"
#include "src/completion/SubstitutionsReader.h"
#include "src/completion/WordList.h"

namespace quorvane {
namespace {

using Path = std::optional<std::string>;

constexpr const char* kUserFile = "/.you_expand_me.json";
/// In bytes. It is written by hand, and all of it is held in memory.
constexpr std::uint64_t kLargestUserFile = std::uint64_t{4} << 20;

/// Parses the file, events going to `handler`. With an error what it was told counts for nothing.
std::optional<JSONError> deserializeJSON(Process& process, const Path& path, JSONHandler& handler) {
  if (!path) return JSONError{JSONError::Kind::Missing, "", 0, 0};
  return process.platform().jsonSerialization.JSONObjectWithStream(*path, handler);
}

bool isSound(const std::optional<JSONError>& error) {
  return !error || error->kind == JSONError::Kind::Missing;
}

/// In bytes; no text in a file is longer.
std::size_t sizeOf(Process& process, const Path& path) {
  if (!path) return 0;
  const auto attributes = process.platform().fileManager.attributesOfItemAtPath(*path);
  return attributes ? attributes->size : 0;
}

Path resource(Process& process, std::string_view name, std::string_view type) {
  return process.platform().bundle.pathForResource(name, type);
}

Made<NewWordTable> makeWordTable(Process& process, const Path& json) {
  FrequencyTable frequencies;
  frequencies.words.reserveBytes(sizeOf(process, json));
  frequencies.annotations.reserveBytes(sizeOf(process, json));
  FrequencyTableReader reader(frequencies);
  const auto error = deserializeJSON(process, json, reader);
  if (error) frequencies = {};
  TextPile list;
  visitWords(process.state<WordListState>(), "",
             [&list](std::string_view word) { list.add(word); });
  return {NewWordTable(list, std::move(frequencies)), isSound(error)};
}

Made<PhonexGroups> makePhonexTable(Process& process, const Path& json) {
  PhonexGroups groups;
  PhonexGroupsReader reader(groups);
  const auto error = deserializeJSON(process, json, reader);
  if (error) groups = {};
  return {groups.sorted(), isSound(error)};
}

/// What is wrong with it, in one line.
void complainOfUserFile(Process& process, const std::optional<JSONError>& error,
                        const SubstitutionsReader& reader) {
  if (!error && reader.offender().empty()) {
    Log(process, "* * ", kUserFile, " is no object of strings: no substitutions");
  } else if (!error) {
    Log(process, "* * ", kUserFile, ": the value of \"", Private{reader.offender()},
        "\" is no string: no substitutions");
  } else if (error->line == 0) {
    Log(process, "* * ", kUserFile, ": ", error->message, ": no substitutions");
  } else {
    Log(process, "* * ", kUserFile, ", line ", error->line, ", column ", error->column, ": ",
        error->message, ": no substitutions");
  }
}

}  // namespace

void ConversionEngine::loadPreparedData() {
  loadTrie();
  wordsWithFrequencyAndTranslation = getWordsWithFrequencyAndTranslation();
  substitutions = getUserDefinedSubstitutions();
  phonexEncoded = getPhonexEncodedWords();
  phonexEncoder.emplace(getPhonexEncoder());
}

void ConversionEngine::loadTrie() {
  auto& list = process_.state<WordListState>();
  const Path path = resource(process_, "google_227800_words", "bin");
  list.fileState = stateOfFile(process_.platform().fileManager, path);
  loadWordList(list, process_.platform().fileManager, path);
}

Cached<WordTable> ConversionEngine::getWordsWithFrequencyAndTranslation() {
  const Path json = resource(process_, "frequency_and_ipa", "json");
  return throughSnapshot<WordTable>(
      process_.platform().fileManager, "frequency_and_ipa",
      process_.state<WordListState>().fileState +
          stateOfFile(process_.platform().fileManager, json),
      [&process = process_, json] { return makeWordTable(process, json); });
}

Cached<PhonexTable> ConversionEngine::getPhonexEncodedWords() {
  const Path json = resource(process_, "phonex_encoded_words", "json");
  return throughSnapshot<PhonexTable>(
      process_.platform().fileManager, "phonex_encoded_words",
      stateOfFile(process_.platform().fileManager, json),
      [&process = process_, json] { return makePhonexTable(process, json); });
}

ConversionEngine::Substitutions ConversionEngine::getUserDefinedSubstitutions() {
  FileManager& files = process_.platform().fileManager;
  const std::string path = files.NSHomeDirectory() + kUserFile;
  const auto attributes = files.attributesOfItemAtPath(path);
  if (!attributes) return {};
  if (attributes->size > kLargestUserFile) {
    Log(process_, "* * ", kUserFile, " is larger than ", kLargestUserFile,
        " bytes: no substitutions");
    return {};
  }
  SubstitutionsReader reader(process_.platform().textEncoding);
  const auto error = deserializeJSON(process_, path, reader);
  if (!error && reader.isWellFormed()) return reader.takeSubstitutions();
  complainOfUserFile(process_, error, reader);
  return {};
}

PhonexEncoder ConversionEngine::getPhonexEncoder() {
  const Path path = resource(process_, "phonex", "js");
  Platform& platform = process_.platform();
  return {platform.scriptHost,
          path ? platform.fileManager.stringWithContentsOfFile(*path) : std::nullopt};
}

}  // namespace quorvane
