#pragma once
// What stands in those of the user's files that are on, as of the last look.

#include <optional>
#include <string>
#include <vector>

#include "tools/checker/AutoType.h"
#include "tools/checker/UserFiles.h"
#include "tools/checker/UserWords.h"

namespace quorvane::checker {

class UserContent {
 public:
  /// Reads nothing yet.
  UserContent(std::filesystem::path support, TextEncoding& encoding, quorvane::LogSink& log);

  [[nodiscard]] const WordSet& words() const { return words_; }
  [[nodiscard]] const Abbreviations& abbreviations() const { return abbreviations_; }

  /// What a file holds that isn't a word or an abbreviation is left out, and the log says how much.
  void read();
  /// The same, where a folder or a file that was read has another date by now.
  void readIfChanged();
  /// Turns a file of abbreviations on or off, by its place from 1, and reads. Nothing where there
  /// is none; a failure is logged.
  void turnOver(std::size_t place);

 private:
  struct Seen {
    std::filesystem::path path;
    std::optional<std::int64_t> date;  ///< none: it wasn't there
  };

  void readFile(const std::filesystem::path& file, UserFileKind kind);
  void note(const std::filesystem::path& item);
  void say(const std::string& line);

  std::filesystem::path support_;
  TextEncoding& encoding_;
  quorvane::LogSink& log_;
  WordSet words_;
  Abbreviations abbreviations_;
  std::vector<Seen> seen_;
};

}  // namespace quorvane::checker
