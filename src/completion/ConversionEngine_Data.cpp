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
std::optional<JSONError> deserializeJSON(Instance& instance, const Path& path,
                                         JSONHandler& handler) {
  if (!path) return JSONError{JSONError::Kind::Missing, "", 0, 0};
  return instance.platform().jsonSerialization.JSONObjectWithStream(*path, handler);
}

bool isSound(const std::optional<JSONError>& error) {
  return !error || error->kind == JSONError::Kind::Missing;
}

/// In bytes; no text in a file is longer.
std::size_t sizeOf(Instance& instance, const Path& path) {
  if (!path) return 0;
  const auto attributes = instance.platform().fileManager.attributesOfItemAtPath(*path);
  return attributes ? attributes->size : 0;
}

Path resource(Instance& instance, std::string_view name, std::string_view type) {
  return instance.platform().bundle.pathForResource(name, type);
}

Made<NewWordTable> makeWordTable(Instance& instance, const Path& json) {
  FrequencyTable frequencies;
  frequencies.words.reserveBytes(sizeOf(instance, json));
  frequencies.annotations.reserveBytes(sizeOf(instance, json));
  FrequencyTableReader reader(frequencies);
  const auto error = deserializeJSON(instance, json, reader);
  if (error) frequencies = {};
  TextPile list;
  visitWords(instance.state<WordListState>(), "",
             [&list](std::string_view word) { list.add(word); });
  return {NewWordTable(list, std::move(frequencies)), isSound(error)};
}

Made<PhonexGroups> makePhonexTable(Instance& instance, const Path& json) {
  PhonexGroups groups;
  PhonexGroupsReader reader(groups);
  const auto error = deserializeJSON(instance, json, reader);
  if (error) groups = {};
  return {groups.sorted(), isSound(error)};
}

/// What is wrong with it, in one line.
void complainOfUserFile(Instance& instance, const std::optional<JSONError>& error,
                        const SubstitutionsReader& reader) {
  if (!error && reader.offender().empty()) {
    Log(instance, "* * ", kUserFile, " is no object of strings: no substitutions");
  } else if (!error) {
    Log(instance, "* * ", kUserFile, ": the value of \"", Private{reader.offender()},
        "\" is no string: no substitutions");
  } else if (error->line == 0) {
    Log(instance, "* * ", kUserFile, ": ", error->message, ": no substitutions");
  } else {
    Log(instance, "* * ", kUserFile, ", line ", error->line, ", column ", error->column, ": ",
        error->message, ": no substitutions");
  }
}

}  // namespace

ConversionEngine::PreparedData ConversionEngine::loadPreparedData(Instance& instance) {
  loadTrie(instance);
  return {getWordsWithFrequencyAndTranslation(instance), getUserDefinedSubstitutions(instance),
          getPhonexEncodedWords(instance), getPhonexEncoder(instance)};
}

void ConversionEngine::loadTrie(Instance& instance) {
  auto& list = instance.state<WordListState>();
  const Path path = resource(instance, "google_227800_words", "bin");
  list.fileState = stateOfFile(instance.platform().fileManager, path);
  loadWordList(list, instance.platform().fileManager, path);
}

Cached<WordTable> ConversionEngine::getWordsWithFrequencyAndTranslation(Instance& instance) {
  const Path json = resource(instance, "frequency_and_ipa", "json");
  return throughSnapshot<WordTable>(instance.platform().fileManager, "frequency_and_ipa",
                                    instance.state<WordListState>().fileState +
                                        stateOfFile(instance.platform().fileManager, json),
                                    [&instance, json] { return makeWordTable(instance, json); });
}

Cached<PhonexTable> ConversionEngine::getPhonexEncodedWords(Instance& instance) {
  const Path json = resource(instance, "phonex_encoded_words", "json");
  return throughSnapshot<PhonexTable>(
      instance.platform().fileManager, "phonex_encoded_words",
      stateOfFile(instance.platform().fileManager, json),
      [&instance, json] { return makePhonexTable(instance, json); });
}

ConversionEngine::Substitutions ConversionEngine::getUserDefinedSubstitutions(Instance& instance) {
  FileManager& files = instance.platform().fileManager;
  const std::string path = files.NSHomeDirectory() + kUserFile;
  const auto attributes = files.attributesOfItemAtPath(path);
  if (!attributes) return {};
  if (attributes->size > kLargestUserFile) {
    Log(instance, "* * ", kUserFile, " is larger than ", kLargestUserFile,
        " bytes: no substitutions");
    return {};
  }
  SubstitutionsReader reader(instance.platform().textEncoding);
  const auto error = deserializeJSON(instance, path, reader);
  if (!error && reader.isWellFormed()) return reader.takeSubstitutions();
  complainOfUserFile(instance, error, reader);
  return {};
}

PhonexEncoder ConversionEngine::getPhonexEncoder(Instance& instance) {
  const Path path = resource(instance, "phonex", "js");
  Platform& platform = instance.platform();
  return {platform.scriptHost,
          path ? platform.fileManager.stringWithContentsOfFile(*path) : std::nullopt};
}

}  // namespace quorvane
