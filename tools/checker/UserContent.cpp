#include "tools/checker/UserContent.h"

#include <algorithm>
#include <utility>

#include "hosts/desktop/PlainFile.h"

namespace quorvane::checker {

namespace {

using std::filesystem::path;

/// When it last changed; none: there is no such item.
std::optional<std::int64_t> dateOf(const path& item) {
  std::error_code error;
  const auto date = std::filesystem::last_write_time(item, error);
  if (error) return std::nullopt;
  return date.time_since_epoch().count();
}

}  // namespace

UserContent::UserContent(path support, TextEncoding& encoding, quorvane::LogSink& log)
    : support_(std::move(support)), encoding_(encoding), log_(log) {}

void UserContent::read() {
  words_.clear();
  abbreviations_.clear();
  seen_.clear();
  for (const auto kind : {UserFileKind::Spelling, UserFileKind::AutoType}) {
    note(userFolder(support_, kind));
    for (const UserFile& file : userFiles(support_, kind, encoding_)) {
      if (file.on) readFile(file.path, kind);
    }
  }
}

void UserContent::readIfChanged() {
  const auto isSame = [](const Seen& item) { return dateOf(item.path) == item.date; };
  if (!std::ranges::all_of(seen_, isSame)) read();
}

void UserContent::turnOver(std::size_t place) {
  const auto files = userFiles(support_, UserFileKind::AutoType, encoding_);
  if (place == 0 || place > files.size()) return;
  const UserFile& file = files[place - 1];
  try {
    switchUserFile(file.path, !file.on);
  } catch (const std::exception& fault) {
    say(fault.what());
  }
  read();
}

/// The date goes before the reading, so that what is written meanwhile shows.
void UserContent::readFile(const path& file, UserFileKind kind) {
  note(file);
  const auto bytes = desktop::readPlainFile(file.native(), kLargestUserFile);
  if (!bytes) return say(file.string() + " is passed over: too large, or not to be read");
  const std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  const std::size_t bad = kind == UserFileKind::Spelling
                              ? readWords(text, words_)
                              : readAbbreviations(text, encoding_, abbreviations_);
  if (bad != 0) say(file.string() + ": " + std::to_string(bad) + " lines are passed over");
}

void UserContent::note(const path& item) { seen_.push_back({item, dateOf(item)}); }

void UserContent::say(const std::string& line) {
  if (log_.enabled) log_.writeLine("* checker: " + line);
}

}  // namespace quorvane::checker
