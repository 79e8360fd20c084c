#include "tools/checker/UserFiles.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

#include "hosts/desktop/AppleDoubleFile.h"
#include "hosts/desktop/AtomicFile.h"
#include "hosts/resources/AppleDouble.h"
#include "hosts/resources/ResourceFork.h"

namespace quorvane::checker {

namespace {

using resources::FinderInfo;
using std::filesystem::path;

constexpr FourCharCode kSwitchType = "cswt"_4cc;
constexpr std::int16_t kSwitchNumber = 0;

struct Mark {
  UserFileKind kind;
  FinderInfo info;
};
constexpr FourCharCode kDictionaryCreator = "QVKT"_4cc;
constexpr std::array<Mark, 9> kMarks{{
    {UserFileKind::Spelling, {"QDXC"_4cc, kDictionaryCreator}},
    {UserFileKind::Spelling, {"QDXD"_4cc, kDictionaryCreator}},
    {UserFileKind::Spelling, {"QPDT"_4cc, kDictionaryCreator}},
    {UserFileKind::Spelling, {"QPDC"_4cc, kDictionaryCreator}},
    {UserFileKind::Spelling, {"QDXX"_4cc, kDictionaryCreator}},
    {UserFileKind::Spelling, {"QPD2"_4cc, kDictionaryCreator}},
    {UserFileKind::AutoType, {"TEXT"_4cc, "QVKE"_4cc}},
    {UserFileKind::AutoType, {"TEXT"_4cc, "\?\?\?\?"_4cc}},
    {UserFileKind::AutoType, {"TEXT"_4cc, 0}},
}};

struct Sample {
  UserFileKind kind;
  std::string_view name;
  FinderInfo info;
  std::string_view content;
};
// Of a dictionary's name the menu leaves the last part out.
constexpr std::array<Sample, 2> kSamples{{
    {UserFileKind::Spelling,
     "Sample Words Dictionary",
     {"QDXC"_4cc, kDictionaryCreator},
     "Quorvane\nTallowmere\n"},
    {UserFileKind::AutoType,
     "Sample Abbreviations",
     {"TEXT"_4cc, "QVKE"_4cc},
     "btw\tby the way\nafaik\tas far as I know\nbrgds\tBest regards,\n"},
}};

path quorvaneFolder(const path& support) { return support / "Quorvane"; }
path dictionariesFolder(const path& support) {
  return quorvaneFolder(support) / "Quorvane Dictionaries";
}
path folderName(UserFileKind kind) {
  return kind == UserFileKind::Spelling ? "Spelling" : "AutoType";
}

bool isOfKind(const FinderInfo& info, UserFileKind kind) {
  return std::ranges::any_of(
      kMarks, [&](const Mark& mark) { return mark.kind == kind && mark.info == info; });
}

/// A file that says nothing of itself is on where it is a dictionary.
bool isOn(const resources::AppleDouble& around, UserFileKind kind) {
  const auto fork = resources::readResourceFork(around.content(resources::kResourceForkEntry));
  const auto* const found = fork ? fork.value->find(kSwitchType, kSwitchNumber) : nullptr;
  if (found == nullptr || found->data.empty()) return kind == UserFileKind::Spelling;
  return found->data.front() != 0;
}

/// The menu lists no others.
bool isText(const std::string& name, TextEncoding& encoding) {
  return encoding
      .initWithData({reinterpret_cast<const std::uint8_t*>(name.data()), name.size()},
                    NSStringEncoding::UTF8)
      .has_value();
}

void addFile(const path& file, UserFileKind kind, std::vector<UserFile>& files) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return;
  const auto bytes = desktop::readAppleDoubleFile(file);
  if (!bytes) return;
  const auto around = resources::readAppleDouble(*bytes);
  if (around && isOfKind(around.value->finderInfo(), kind)) {
    files.push_back({file, isOn(*around.value, kind)});
  }
}

using RomanName = std::array<std::uint8_t, 256>;

RomanName romanName(const path& file, TextEncoding& encoding) {
  const std::string name = file.filename().native();
  const auto units = encoding.initWithData(
      {reinterpret_cast<const std::uint8_t*>(name.data()), name.size()}, NSStringEncoding::UTF8);
  RomanName roman{};
  if (units) encoding.CFStringGetCString(*units, roman);
  return roman;
}

void changeSwitch(resources::AppleDouble& around, bool on) {
  resources::Bytes& bytes = around.contentOf(resources::kResourceForkEntry);
  auto fork = resources::readResourceFork(bytes);
  if (!fork) throw std::runtime_error(std::string(fork.fault));
  resources::Bytes& data = fork.value->at(kSwitchType, kSwitchNumber).data;
  if (data.empty()) data.resize(1);
  data.front() = on ? 1 : 0;
  const auto written = resources::writeResourceFork(*fork.value);
  if (!written) throw std::runtime_error(std::string(written.fault));
  bytes = *written.value;
}

/// With what it has beside its data.
void copyFile(const path& from, const path& to) {
  std::error_code error;
  if (std::filesystem::file_size(from, error) > kLargestUserFile || error) return;
  const path around = resources::appleDoublePath(from.native());
  std::filesystem::copy_file(from, to, error);
  std::filesystem::copy_file(around, resources::appleDoublePath(to.native()), error);
}

void makeSample(const path& folder, const Sample& sample) {
  std::filesystem::create_directories(folder);
  const path file = folder / sample.name;
  if (!desktop::writeFileAtomically(file, sample.content, desktop::Durability::Lasting)) {
    throw std::runtime_error(file.string() + " can't be written");
  }
  desktop::updateAppleDouble(file, [&](resources::AppleDouble& around) {
    around.setFinderInfo(sample.info);
    changeSwitch(around, false);
  });
}

}  // namespace

path userFolder(const path& support, UserFileKind kind) {
  const path dictionaries = dictionariesFolder(support);
  std::error_code error;
  const bool beside =
      kind == UserFileKind::Spelling && !std::filesystem::is_directory(dictionaries, error);
  return (beside ? quorvaneFolder(support) : dictionaries) / folderName(kind);
}

std::vector<UserFile> userFiles(const path& support, UserFileKind kind, TextEncoding& encoding) {
  std::vector<UserFile> files;
  std::error_code error;
  for (std::filesystem::directory_iterator at(userFolder(support, kind), error), end;
       !error && at != end; at.increment(error)) {
    const std::string name = at->path().filename();
    const bool isListed = !resources::isAppleDoubleName(name) && isText(name, encoding);
    if (isListed) addFile(at->path(), kind, files);
  }
  std::ranges::sort(files, {},
                    [&](const UserFile& file) { return romanName(file.path, encoding); });
  return files;
}

void copyUserFiles(const path& from, const path& to, TextEncoding& encoding) {
  for (const auto kind : {UserFileKind::Spelling, UserFileKind::AutoType}) {
    const auto files = userFiles(from, kind, encoding);
    const path folder = dictionariesFolder(to) / folderName(kind);
    std::error_code ignored;
    if (!files.empty()) std::filesystem::create_directories(folder, ignored);
    for (const UserFile& file : files) copyFile(file.path, folder / file.path.filename());
  }
}

void switchUserFile(const path& file, bool on) {
  desktop::updateAppleDouble(file,
                             [on](resources::AppleDouble& around) { changeSwitch(around, on); });
}

/// Where the user has dictionaries beside it, the folder of both kinds stays away: it would hide
/// them.
void makeUserFolders(const path& support, quorvane::LogSink& log) {
  const path beside = quorvaneFolder(support) / folderName(UserFileKind::Spelling);
  std::error_code ignored;
  if (userFolder(support, UserFileKind::Spelling) == beside &&
      std::filesystem::exists(beside, ignored)) {
    return;
  }
  for (const Sample& sample : kSamples) {
    const path folder = userFolder(support, sample.kind);
    std::error_code error;
    if (std::filesystem::exists(folder, error)) continue;
    try {
      makeSample(dictionariesFolder(support) / folderName(sample.kind), sample);
    } catch (const std::exception& fault) {
      if (log.enabled)
        log.writeLine("* checker: no folder for the user's files: " + std::string(fault.what()));
    }
  }
}

}  // namespace quorvane::checker
