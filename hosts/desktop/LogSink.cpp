#include "hosts/desktop/LogSink.h"

namespace quorvane::desktop {
namespace {

constexpr std::int64_t kFlushDelay = G_USEC_PER_SEC;

}  // namespace

/// The wait is worked out at each turn of the loop, so that writing a line needn't tell GLib.
struct LogSink::FlushSource {
  GSource base;
  LogSink* sink;

  static gboolean prepare(GSource* source, gint* timeout) {
    const LogSink& sink = *reinterpret_cast<FlushSource*>(source)->sink;
    *timeout = -1;
    if (sink.buffer_.empty()) return FALSE;
    const std::int64_t left = sink.due_ - g_get_monotonic_time();
    *timeout = left > 0 ? static_cast<gint>(left / 1000 + 1) : 0;
    return left <= 0;
  }
  static gboolean check(GSource* source) {
    const LogSink& sink = *reinterpret_cast<FlushSource*>(source)->sink;
    return !sink.buffer_.empty() && sink.due_ <= g_get_monotonic_time();
  }
  static gboolean dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    reinterpret_cast<FlushSource*>(source)->sink->flush();
    return G_SOURCE_CONTINUE;
  }

  static GSource* create(LogSink* sink) {
    static GSourceFuncs functions{prepare, check, dispatch, nullptr, nullptr, nullptr};
    GSource* source = g_source_new(&functions, sizeof(FlushSource));
    reinterpret_cast<FlushSource*>(source)->sink = sink;
    return source;
  }
};

LogSink::LogSink(int descriptor, GMainContext* context)
    : writer_(descriptor), source_(FlushSource::create(this)) {
  buffer_.reserve(kBufferSize);
  g_source_attach(source_, context);
}

LogSink::~LogSink() {
  g_source_destroy(source_);
  g_source_unref(source_);
  flush();
}

void LogSink::writeLine(std::string_view line) {
  if (buffer_.size() + line.size() + 1 > kBufferSize) flush();
  buffer_.append(line);
  buffer_.push_back('\n');
  due_ = g_get_monotonic_time() + kFlushDelay;
  if (buffer_.size() >= kBufferSize) flush();
}

void LogSink::flush() {
  if (buffer_.empty()) return;
  writer_.write(buffer_);
  buffer_.clear();
}

}  // namespace quorvane::desktop
