#pragma once
// What a launched program prints: line by line to the log, under its name. A reader who is slow
// holds the program up by nothing; what it can't take is lost.

#include <memory>
#include <string>

#include "hosts/desktop/Descriptor.h"
#include "hosts/desktop/RunLoop.h"

namespace quorvane::desktop {

class LaunchedOutput {
 public:
  /// Throws std::system_error where there is no descriptor left.
  LaunchedOutput(std::string name, RunLoop& runLoop, quorvane::LogSink& log);
  LaunchedOutput(const LaunchedOutput&) = delete;
  LaunchedOutput& operator=(const LaunchedOutput&) = delete;

  /// The program's end of it, until it has been started.
  [[nodiscard]] int writer() const { return writer_.get(); }
  void closeWriter() { writer_.close(); }
  /// Takes in what is there.
  void read();
  /// The program has ended: a line counts without its end, too.
  void end();
  /// Empty: it has said nothing.
  [[nodiscard]] const std::string& lastLine() const { return lastLine_; }

 private:
  void take(std::string_view text);
  void finishLine();

  std::string name_;
  quorvane::LogSink& log_;
  Descriptor reader_;
  Descriptor writer_;
  std::string line_;  ///< its end hasn't come
  std::string lastLine_;
  std::unique_ptr<Registration> watch_;
};

}  // namespace quorvane::desktop
