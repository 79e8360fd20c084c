#pragma once
// A child process of a test with all that it starts, and the lines that it exchanges with us.

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/desktop/Descriptor.h"

namespace quorvane::tests {

/// A connection on which both sides speak in lines.
class Lines {
 public:
  explicit Lines(int descriptor) : descriptor_(descriptor) {}

  void send(const std::string& line) const;
  /// Waits for a line that begins so and gives what follows. Lines before it count as read. Throws
  /// where none comes within 20 seconds or the other side has gone.
  std::string await(std::string_view beginning);
  /// The last line that began so, read or not; nothing: there was none.
  std::optional<std::string> last(std::string_view beginning);
  /// Whatever has come up to now counts as read.
  void skip();

 private:
  /// False where nothing came for so long, or never will.
  bool take(int milliseconds);

  desktop::Descriptor descriptor_;
  std::string rest_;
  std::vector<std::string> lines_;
  std::size_t read_ = 0;
};

struct Launch {
  std::vector<std::string> command;
  std::vector<std::string> variables;  ///< NAME=VALUE, the first of a name counts; no others
  std::filesystem::path log;           ///< where its standard error goes
  bool speaks = false;                 ///< standard input and output are `lines`
};

/// Killed with its process group at the latest with this object, and when we die.
class Program {
 public:
  explicit Program(const Launch& launch);
  ~Program() { kill(); }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  [[nodiscard]] pid_t pid() const { return pid_; }
  [[nodiscard]] Lines& lines() { return lines_; }
  void signal(int number) const;
  void kill();
  /// Waits for its end.
  int wait();

 private:
  Program(const Launch& launch, const int (&ends)[2]);

  pid_t pid_;
  Lines lines_;
};

}  // namespace quorvane::tests
