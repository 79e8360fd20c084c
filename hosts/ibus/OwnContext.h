#pragma once
// A main context that turns within the default one, but never within itself.

#include <glib.h>

#include <memory>

namespace quorvane::ibus {

class OwnContext {
 public:
  OwnContext();
  ~OwnContext();
  OwnContext(const OwnContext&) = delete;
  OwnContext& operator=(const OwnContext&) = delete;

  /// What GDBus makes while one of these lives is handled here.
  class Making {
   public:
    explicit Making(const OwnContext& context) : context_(context.context_) {
      g_main_context_push_thread_default(context_);
    }
    ~Making() { g_main_context_pop_thread_default(context_); }
    Making(const Making&) = delete;
    Making& operator=(const Making&) = delete;

   private:
    GMainContext* context_;
  };

 private:
  GMainContext* context_;
  GSource* source_;
};

}  // namespace quorvane::ibus
