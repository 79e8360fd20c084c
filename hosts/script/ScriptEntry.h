#pragma once
// Leaving an interpreter that doesn't come back by itself.

namespace quorvane::script {

/// Runs `work` on this thread, only one at a time. False where it was left: by `leave`, after a
/// second of the thread's own time, or because no timer could be had, and then it hasn't begun.
/// What is left in the middle isn't destroyed: `work` owns nothing, and calls nothing that takes a
/// lock except inside an Uninterrupted.
bool enter(void (*work)(void* data), void* data);

/// From inside `work`.
[[noreturn]] void leave();

/// While one lives, it is only noted that the time is up; its end leaves. Does nothing outside of
/// `enter`.
class Uninterrupted {
 public:
  Uninterrupted();
  ~Uninterrupted();
  Uninterrupted(const Uninterrupted&) = delete;
  Uninterrupted& operator=(const Uninterrupted&) = delete;
};

}  // namespace quorvane::script
