#pragma once
// The other side of a benchmark: child processes that stand still until they are asked.

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <functional>

namespace quorvane::bench {

/// Those of the parameter file, for this process.
inline constexpr std::uint32_t kSwitches = 0x11833;

/// A child process, killed and reaped at the end.
class Child {
 public:
  explicit Child(const std::function<void()>& body);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  [[nodiscard]] pid_t pid() const { return pid_; }

 private:
  pid_t pid_;
};

/// Runtime folder, key offset, settings and parameter file of their own for this run, removed at
/// the end.
class Surroundings {
 public:
  Surroundings();
  ~Surroundings();
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;

 private:
  /// The word data that scripts/setup made; failing that a word list of one word.
  [[nodiscard]] std::filesystem::path bundleFolder() const;

  std::filesystem::path folder_;
};

/// A main application that has the five segments, serves the server port with empty answers and
/// announces itself; it polls nothing. Runs until killed.
void serveAsMainApplication();

/// Sends back every packet that comes, until the other end closes.
void echo(int socket);

}  // namespace quorvane::bench
