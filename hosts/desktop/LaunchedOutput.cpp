#include "hosts/desktop/LaunchedOutput.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "hosts/desktop/PrintableLine.h"

namespace quorvane::desktop {
namespace {

constexpr std::size_t kLongestLine = 1000;
constexpr int kMostReads = 16;  // of one turn

}  // namespace

LaunchedOutput::LaunchedOutput(std::string name, RunLoop& runLoop, quorvane::LogSink& log)
    : name_(std::move(name)), log_(log) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    throw std::system_error(errno, std::generic_category(), "no pipe");
  }
  reader_ = Descriptor(ends[0]);
  writer_ = Descriptor(ends[1]);
  watch_ = runLoop.watch(reader_.get(), G_IO_IN, [this](GIOCondition) { read(); });
}

void LaunchedOutput::read() {
  std::array<char, 4096> part;
  for (int i = 0; i < kMostReads; ++i) {
    const ssize_t size = ::read(reader_.get(), part.data(), part.size());
    if (size == 0) end();
    if (size <= 0) return;
    take({part.data(), static_cast<std::size_t>(size)});
  }
}

void LaunchedOutput::end() {
  finishLine();
  watch_.reset();
}

void LaunchedOutput::take(std::string_view text) {
  for (const char c : text) {
    if (c == '\n' || line_.size() == kLongestLine) finishLine();
    if (c != '\n') line_.push_back(c);
  }
}

void LaunchedOutput::finishLine() {
  if (line_.empty()) return;
  lastLine_ = printableLine(std::exchange(line_, {}));
  if (log_.enabled) log_.writeLine(name_ + ": " + lastLine_);
}

}  // namespace quorvane::desktop
