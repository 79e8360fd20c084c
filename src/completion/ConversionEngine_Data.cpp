// The loading of the word data. The JSON files are the truth; what was made of them is kept in
// snapshots, which are made anew whenever one of the files is another one than it was.

#include "src/base/Log.h"
#include "src/base/Text.h"
#include "src/completion/ConversionEngine.h"
#include "src/completion/SubstitutionsReader.h"
#include "src/completion/WordList.h"

namespace quorvane {
namespace {

using Path = std::optional<std::string>;

/// A finished table. `sound`: worth keeping, because no file was there but couldn't be read.
struct Made {
  std::unique_ptr<FileData> snapshot;
  bool sound = true;
};

constexpr const char* kUserFile = "/.you_expand_me.json";

/// Parses the file, events going to `handler`. With an error what it was told counts for nothing.
std::optional<JSONError> deserializeJSON(Process& process, const Path& path, JSONHandler& handler) {
  if (!path) return JSONError{JSONError::Kind::Missing, "", 0, 0};
  return process.platform().jsonSerialization.JSONObjectWithStream(*path, handler);
}

bool isSound(const std::optional<JSONError>& error) {
  return !error || error->kind == JSONError::Kind::Missing;
}

/// Tells one state of a file from every other.
std::string stateOf(Process& process, const Path& path) {
  if (!path) return "none\n";
  const auto attributes = process.platform().fileManager.attributesOfItemAtPath(*path);
  if (!attributes) return *path + " missing\n";
  return *path + " " + std::to_string(attributes->size) + " " +
         std::to_string(attributes->modificationNanoseconds) + " " +
         std::to_string(attributes->systemFileNumber) + "\n";
}

Path resource(Process& process, std::string_view name, std::string_view type) {
  return process.platform().bundle.pathForResource(name, type);
}

Made makeWordTable(Process& process, const Path& json, std::string_view key) {
  FrequencyTable frequencies;
  FrequencyTableReader reader(frequencies);
  const auto error = deserializeJSON(process, json, reader);
  if (error) frequencies = {};
  TextPile list;
  visitWords(process.state<WordListState>(), "",
             [&list](std::string_view word) { list.add(word); });
  return {WordTable::make(list, frequencies, key), isSound(error)};
}

Made makePhonexTable(Process& process, const Path& json, std::string_view key) {
  PhonexGroups groups;
  PhonexGroupsReader reader(groups);
  const auto error = deserializeJSON(process, json, reader);
  if (error) groups = {};
  return {PhonexTable::make(groups, key), isSound(error)};
}

/// The table in the snapshot at `path`, if it was made of what `key` says and is whole.
template <class Table>
std::optional<Table> openSnapshot(Process& process, const std::string& path,
                                  const std::string& key) {
  auto file = process.platform().fileManager.dataWithContentsOfMappedFile(path);
  if (file == nullptr) return std::nullopt;
  try {
    return Table(std::move(file), key);
  } catch (const DamagedSnapshot&) {
    return std::nullopt;
  }
}

/// A table out of the snapshot at `path`. What `make(key)` makes is written there first where it
/// must be; where it can't be written it stays in memory.
template <class Table, class Make>
Cached<Table> throughSnapshot(Process& process, const std::string& path, const std::string& key,
                              Make make) {
  const auto makeAndKeep = [&process, path, key, make] {
    Made made = make(key);
    if (made.sound) process.platform().fileManager.writeToFile(path, made.snapshot->bytes());
    return std::move(made.snapshot);
  };
  const auto makeAnew = [makeAndKeep, key] { return Table(makeAndKeep(), key); };
  if (auto table = openSnapshot<Table>(process, path, key)) return {*std::move(table), makeAnew};
  std::unique_ptr<FileData> made = makeAndKeep();
  if (auto table = openSnapshot<Table>(process, path, key)) return {*std::move(table), makeAnew};
  return {Table(std::move(made), key), makeAnew};
}

std::string snapshotPath(Process& process, std::string_view name) {
  return process.platform().fileManager.cachesDirectory() + "/" + std::string(name) + ".snapshot";
}

}  // namespace

void ConversionEngine::loadPreparedData() {
  loadTrie();
  wordsWithFrequencyAndTranslation_ = getWordsWithFrequencyAndTranslation();
  substitutions_ = getUserDefinedSubstitutions();
  phonexEncoded_ = getPhonexEncodedWords();
  phonexEncoder_.emplace(getPhonexEncoder());
}

void ConversionEngine::loadTrie() {
  auto& list = process_.state<WordListState>();
  const Path path = resource(process_, "google_227800_words", "bin");
  list.fileState = stateOf(process_, path);
  loadWordList(list, process_.platform().fileManager, path);
}

Cached<WordTable> ConversionEngine::getWordsWithFrequencyAndTranslation() {
  const Path json = resource(process_, "frequency_and_ipa", "json");
  return throughSnapshot<WordTable>(
      process_, snapshotPath(process_, "frequency_and_ipa"),
      process_.state<WordListState>().fileState + stateOf(process_, json),
      [&process = process_, json](const std::string& key) {
        return makeWordTable(process, json, key);
      });
}

Cached<PhonexTable> ConversionEngine::getPhonexEncodedWords() {
  const Path json = resource(process_, "phonex_encoded_words", "json");
  return throughSnapshot<PhonexTable>(process_, snapshotPath(process_, "phonex_encoded_words"),
                                      stateOf(process_, json),
                                      [&process = process_, json](const std::string& key) {
                                        return makePhonexTable(process, json, key);
                                      });
}

ConversionEngine::Substitutions ConversionEngine::getUserDefinedSubstitutions() {
  const std::string home = process_.platform().fileManager.NSHomeDirectory();
  SubstitutionsReader reader(process_.platform().textEncoding);
  const auto error = deserializeJSON(process_, home + kUserFile, reader);
  if (!error && reader.isWellFormed()) return reader.substitutions();
  if (!error) {
    Log(process_, "* * ", kUserFile, ": the value of \"", Private{reader.offender()},
        "\" is no string: no substitutions");
  } else if (error->kind != JSONError::Kind::Missing) {
    Log(process_, "* * ", kUserFile, ", line ", error->line, ", column ", error->column, ": ",
        error->message, ": no substitutions");
  }
  return {};
}

PhonexEncoder ConversionEngine::getPhonexEncoder() {
  const Path path = resource(process_, "phonex", "js");
  Platform& platform = process_.platform();
  return {platform.scriptHost,
          path ? platform.fileManager.stringWithContentsOfFile(*path) : std::nullopt};
}

}  // namespace quorvane
