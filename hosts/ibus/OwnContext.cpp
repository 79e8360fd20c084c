#include "hosts/ibus/OwnContext.h"

#include <glib-unix.h>

#include <array>

namespace quorvane::ibus {
namespace {

struct Source {
  GSource base;
  GMainContext* context;
};

GMainContext* contextOf(GSource* source) {
  return reinterpret_cast<Source*>(source)->context;  // NOLINT: as GLib has it
}

gboolean isReady(GSource* source) { return g_main_context_pending(contextOf(source)); }

GSourceFuncs functions{.prepare =
                           [](GSource* source, gint* timeout) {
                             *timeout = -1;
                             return isReady(source);
                           },
                       .check = isReady,
                       .dispatch =
                           [](GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
                             g_main_context_iteration(contextOf(source), FALSE);
                             return static_cast<gboolean>(G_SOURCE_CONTINUE);
                           },
                       .finalize = nullptr,
                       .closure_callback = nullptr,
                       .closure_marshal = nullptr};

/// By which other threads wake the context.
int wakeUpDescriptor(GMainContext* context) {
  std::array<GPollFD, 4> descriptors{};
  gint priority = 0;
  gint timeout = 0;
  g_main_context_prepare(context, &priority);
  g_main_context_query(context, G_MAXINT, &timeout, descriptors.data(),
                       static_cast<gint>(descriptors.size()));
  return descriptors.front().fd;
}

}  // namespace

OwnContext::OwnContext()
    : context_(g_main_context_new()), source_(g_source_new(&functions, sizeof(Source))) {
  g_main_context_acquire(context_);  // other threads wake no context that nobody owns
  reinterpret_cast<Source*>(source_)->context = context_;  // NOLINT: as GLib has it
  g_source_add_unix_fd(source_, wakeUpDescriptor(context_), G_IO_IN);
  g_source_attach(source_, nullptr);
}

OwnContext::~OwnContext() {
  g_source_destroy(source_);
  g_source_unref(source_);
  g_main_context_release(context_);
  g_main_context_unref(context_);
}

}  // namespace quorvane::ibus
