#pragma once
// What the user has taken back: corrections not to be made again. Once is for this session, twice
// for good. A settings file of the user's own holds a group for each word or passage, and nothing
// else of what was typed:
//
//     [teh]
//     replacement=the
//     times=2

#include <filesystem>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "hosts/desktop/KeyFile.h"

namespace quorvane::checker {

class TakenBack {
 public:
  struct Entry {
    std::string typed;
    std::string replacement;
    std::uint32_t times = 0;
  };

  /// The file is made at the first need; what can't be written stays in memory, and is logged.
  TakenBack(const std::filesystem::path& configDirectory, quorvane::LogSink& log)
      : file_(fileIn(configDirectory), log) {}

  [[nodiscard]] bool refuses(const std::string& typed, const std::string& replacement) const;
  void learn(const std::string& typed, const std::string& replacement);

  [[nodiscard]] std::vector<Entry> entries() const;
  /// Removes the file. A stand-in that runs knows what it knows until it ends.
  static void clear(const std::filesystem::path& configDirectory);

 private:
  static std::filesystem::path fileIn(const std::filesystem::path& configDirectory) {
    return configDirectory / "taken-back-corrections";
  }
  [[nodiscard]] Entry entryFor(const std::string& typed) const;

  desktop::KeyFile file_;
  std::set<std::pair<std::string, std::string>> thisSession_;
};

}  // namespace quorvane::checker
