// The loading of the word data. The JSON files are the truth; what was made of them is kept in
// snapshots, which are made anew whenever one of the files is another one than it was.

#include "src/base/Log.h"
#include "src/base/Text.h"
#include "src/completion/ConversionEngine.h"
#include "src/completion/NewWordTable.h"
#include "src/completion/SubstitutionsReader.h"
#include "src/completion/WordList.h"

namespace quorvane {
namespace {

using Path = std::optional<std::string>;

/// A new table. `sound`: worth keeping, because no file was there but couldn't be read.
template <class NewTable>
struct Made {
  NewTable table;
  bool sound = true;
};

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

/// Tells one state of a file from every other.
std::string stateOf(Process& process, const Path& path) {
  if (!path) return "none\n";
  const auto attributes = process.platform().fileManager.attributesOfItemAtPath(*path);
  if (!attributes) return *path + " missing\n";
  return *path + " " + std::to_string(attributes->size) + " " +
         std::to_string(attributes->modificationNanoseconds) + " " +
         std::to_string(attributes->systemFileNumber) + "\n";
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

/// A table out of the snapshot at `path`. What `make` makes is written there first where it must
/// be; where it can't be written it stays in memory. If the snapshot proves damaged later, a table
/// is made of the files as they are then, and the next start makes a snapshot again.
template <class Table, class Make>
Cached<Table> throughSnapshot(Process& process, const std::string& path, const std::string& key,
                              Make make) {
  FileManager& files = process.platform().fileManager;
  const auto makeAnew = [&files, path, key, make] {
    files.writeToFile(path, {});
    const auto made = make();
    return Table(NewSnapshot(made.table.kKind, key, made.table.sections()).joined(), key);
  };
  if (auto table = openSnapshot<Table>(process, path, key)) return {*std::move(table), makeAnew};
  const auto made = make();
  const NewSnapshot snapshot(made.table.kKind, key, made.table.sections());
  if (made.sound) files.writeToFile(path, snapshot.parts());
  if (auto table = openSnapshot<Table>(process, path, key)) return {*std::move(table), makeAnew};
  return {Table(snapshot.joined(), key), makeAnew};
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

std::string snapshotPath(Process& process, std::string_view name) {
  return process.platform().fileManager.cachesDirectory() + "/" + std::string(name) + ".snapshot";
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
  list.fileState = stateOf(process_, path);
  loadWordList(list, process_.platform().fileManager, path);
}

Cached<WordTable> ConversionEngine::getWordsWithFrequencyAndTranslation() {
  const Path json = resource(process_, "frequency_and_ipa", "json");
  return throughSnapshot<WordTable>(
      process_, snapshotPath(process_, "frequency_and_ipa"),
      process_.state<WordListState>().fileState + stateOf(process_, json),
      [&process = process_, json] { return makeWordTable(process, json); });
}

Cached<PhonexTable> ConversionEngine::getPhonexEncodedWords() {
  const Path json = resource(process_, "phonex_encoded_words", "json");
  return throughSnapshot<PhonexTable>(
      process_, snapshotPath(process_, "phonex_encoded_words"), stateOf(process_, json),
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
