#pragma once
// `quorvane` as a child process of a test, with a folder of its own for everything that it keeps.

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::tests {

/// Holds the runtime folder and the settings of the programs of one test. Gone afterwards.
class OwnFolder {
 public:
  OwnFolder();
  ~OwnFolder();
  OwnFolder(const OwnFolder&) = delete;
  OwnFolder& operator=(const OwnFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  /// Where programs meet that have been told nothing else.
  [[nodiscard]] std::filesystem::path usualRuntimeFolder() const { return path_ / "quorvane"; }
  [[nodiscard]] std::vector<std::string> environment() const;

 private:
  std::filesystem::path path_;
};

struct Start {
  std::vector<std::string> arguments;
  std::string input{};                   ///< standard input
  std::vector<std::string> variables{};  ///< NAME=VALUE, in addition to the folder's
  std::string output{};                  ///< a file for standard output; empty: it is kept
};

class RunningProgram {
 public:
  RunningProgram(const OwnFolder& folder, const Start& start);
  /// Kills it where it still runs.
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  [[nodiscard]] pid_t pid() const { return pid_; }
  void signal(int number) const;
  /// Exit code, 128 + number after a signal, -1 where it hasn't ended within a minute.
  int wait();
  [[nodiscard]] std::string output() const;
  [[nodiscard]] std::string errors() const;

 private:
  std::filesystem::path outputFile_;
  std::filesystem::path errorFile_;
  pid_t pid_ = -1;
  bool ended_ = false;
};

/// Each word is as typed or as it is right, with no blank more or less.
bool isPartlyRight(const std::string& text, const std::string& typed, const std::string& right);
/// What `quorvane type` makes of its input, at the fifth time at the latest: a machine that is held
/// up leaves corrections out, and nothing else. Any other text than that is given back at once.
std::string typedUntilRight(const OwnFolder& folder, const Start& start, const std::string& right);

std::string contentOf(const std::filesystem::path& file);

/// How many main applications and input methods have announced themselves in `folder`.
std::size_t announcementsIn(const std::filesystem::path& folder);
/// Process id of the one that has with this signature; 0: none.
pid_t announced(const std::filesystem::path& folder, std::string_view signature);

/// As `execve` takes them.
std::vector<char*> pointersTo(const std::vector<std::string>& texts);

void pauseShortly();

/// Looks again and again until `condition` holds; false where it doesn't in all that time.
template <class Condition>
bool eventually(Condition condition, std::chrono::milliseconds longest = std::chrono::minutes(1)) {
  const auto limit = std::chrono::steady_clock::now() + longest;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > limit) return false;
    pauseShortly();
  }
  return true;
}

}  // namespace quorvane::tests
