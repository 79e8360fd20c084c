#pragma once
// Everything that was done to the platform, in order, a readable line a call; and the count of
// calls, at which a test can make the world change.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "platform/MacTypes.h"

namespace quorvane {

class Journal {
 public:
  static constexpr std::size_t kNoLine = std::numeric_limits<std::size_t>::max();

  // Pieces of a line that aren't plain text or decimal numbers.
  struct Hex {
    std::uint64_t value;
  };
  struct Octal {
    int value;
  };
  /// Four characters, or decimal where they can't be printed.
  struct Code {
    FourCharCode value;
  };

  static void append(std::string& line, std::string_view text) { line += text; }
  static void append(std::string& line, Hex number);
  static void append(std::string& line, Octal number);
  static void append(std::string& line, Code code);
  static void append(std::string& line, double number);
  /// High and low word with a space between.
  static void append(std::string& line, const ProcessSerialNumber& psn);
  template <std::integral Number>
  static void append(std::string& line, Number number) {
    line += std::to_string(number);
  }

  /// Counts a call, runs what was planned for it, then records its line. Returns the number of the
  /// line for `result`. While recording is off nothing is put together and nothing allocated.
  template <class... Pieces>
  std::size_t call(const Pieces&... pieces) {
    count();
    if (!recording_) return kNoLine;
    std::string line;
    (append(line, pieces), ...);
    return add(std::move(line));
  }
  /// Adds ` -> result` to a line that is still there; gives the result back.
  template <class Result>
  Result result(std::size_t line, Result value) {
    if (std::string* text = find(line)) {
      text->append(" -> ");
      append(*text, value);
    }
    return value;
  }
  /// Counts a call that isn't worth a line.
  void count();
  /// A call that comes in long runs: a run becomes one line with its number, `name x12`.
  void repeated(std::string_view name);
  /// A line that isn't a call: what a script did.
  template <class... Pieces>
  void note(const Pieces&... pieces) {
    if (!recording_) return;
    std::string line;
    (append(line, pieces), ...);
    add(std::move(line));
  }

  [[nodiscard]] std::uint64_t calls() const { return calls_; }
  /// Runs `function` once, just before the n-th call from now (1: the next). A later plan replaces
  /// an earlier one; n 0 drops it.
  void beforeCall(std::uint64_t n, std::function<void()> function);

  [[nodiscard]] std::vector<std::string> lines() const { return {lines_.begin(), lines_.end()}; }
  /// The lines, and an empty journal. The count goes on.
  std::vector<std::string> take();
  void clear();
  void setRecording(bool recording) { recording_ = recording; }
  [[nodiscard]] bool recording() const { return recording_; }
  /// Keeps only the last `limit` lines.
  void setLimit(std::size_t limit);

 private:
  std::size_t add(std::string line);
  std::string* find(std::size_t line);

  bool recording_ = true;
  std::size_t limit_ = 10000;
  std::size_t dropped_ = 0;  ///< number of the first line that is still there
  std::deque<std::string> lines_;
  std::string run_;  ///< name of the run that the last line stands for; empty: none
  std::uint64_t runLength_ = 0;
  std::uint64_t calls_ = 0;
  std::uint64_t plannedAt_ = 0;
  std::function<void()> planned_;
};

// Of a part that several hosts share: null where nobody keeps a journal.
template <class... Pieces>
std::size_t record(Journal* journal, const Pieces&... pieces) {
  return journal ? journal->call(pieces...) : Journal::kNoLine;
}
template <class Result>
Result recordResult(Journal* journal, std::size_t line, Result value) {
  return journal ? journal->result(line, value) : value;
}

}  // namespace quorvane
