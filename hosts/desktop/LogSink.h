#pragma once
// The log: lines gather in memory and go out one second after the last, when the buffer is full,
// and when the sink goes. Writing a line makes no system call otherwise.

#include <glib.h>

#include <cstdint>
#include <string>

#include "hosts/desktop/BoundedWriter.h"
#include "platform/LogSink.h"

namespace quorvane::desktop {

class LogSink final : public quorvane::LogSink {
 public:
  static constexpr std::size_t kBufferSize = 64 * 1024;

  /// `descriptor` stays the caller's.
  LogSink(int descriptor, GMainContext* context);
  ~LogSink() override;
  LogSink(const LogSink&) = delete;
  LogSink& operator=(const LogSink&) = delete;

  void writeLine(std::string_view line) override;
  void flush();

 private:
  struct FlushSource;

  BoundedWriter writer_;
  std::string buffer_;
  std::int64_t due_ = 0;  ///< monotonic microseconds; meaningful while the buffer holds something
  GSource* source_;
};

}  // namespace quorvane::desktop
