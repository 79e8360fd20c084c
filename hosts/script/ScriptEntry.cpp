#include "hosts/script/ScriptEntry.h"

#include <unistd.h>

#include <atomic>
#include <cassert>
#include <csetjmp>
#include <csignal>
#include <cstdint>
#include <ctime>

namespace quorvane::script {
namespace {

constexpr time_t kSecondsLimit = 1;

struct Entry {
  sigjmp_buf wayOut;
  std::uintptr_t number;  ///< the timer's signal carries it, and so comes to no later entry
  volatile std::sig_atomic_t uninterrupted = 0;
  volatile std::sig_atomic_t timeIsUp = 0;
};

// The handler has nothing else to find it by.
thread_local constinit Entry* volatile current = nullptr;
thread_local constinit std::uintptr_t entries = 0;

int signalNumber() { return SIGRTMAX; }

void onTimer(int /*signal*/, siginfo_t* info, void* /*context*/) {
  Entry* const entry = current;
  if (entry == nullptr) return;
  if (reinterpret_cast<std::uintptr_t>(info->si_value.sival_ptr) != entry->number) return;
  if (entry->uninterrupted == 0) siglongjmp(entry->wayOut, 1);
  entry->timeIsUp = 1;
}

/// For good: a signal that comes late must find it. Leaving from it needs no mask restored.
bool installHandler() {
  struct sigaction action {};
  action.sa_sigaction = onTimer;
  action.sa_flags = SA_SIGINFO | SA_NODEFER | SA_RESTART;
  sigset_t ours;
  sigemptyset(&ours);
  sigaddset(&ours, signalNumber());
  return sigaction(signalNumber(), &action, nullptr) == 0 &&
         pthread_sigmask(SIG_UNBLOCK, &ours, nullptr) == 0;
}

/// Measures what this thread computes, so that a busy machine breaks no script that is quick.
class Timer {
 public:
  explicit Timer(std::uintptr_t number) {
    sigevent event{};
    event.sigev_notify = SIGEV_THREAD_ID;
    event.sigev_signo = signalNumber();
    event.sigev_value.sival_ptr = reinterpret_cast<void*>(number);
    event._sigev_un._tid = gettid();
    exists_ = timer_create(CLOCK_THREAD_CPUTIME_ID, &event, &timer_) == 0;
    // Again and again, should the first one come before the way out stands.
    const itimerspec limit{{kSecondsLimit, 0}, {kSecondsLimit, 0}};
    runs_ = exists_ && timer_settime(timer_, 0, &limit, nullptr) == 0;
  }
  ~Timer() {
    if (exists_) timer_delete(timer_);
  }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  [[nodiscard]] bool runs() const { return runs_; }

 private:
  timer_t timer_{};
  bool exists_ = false;
  bool runs_ = false;
};

/// Comes back twice when it is left; so nothing is changed here in between.
bool runUntilLeft(Entry& entry, void (*work)(void* data), void* data) {
  const bool wasLeft = sigsetjmp(entry.wayOut, 0) != 0;
  if (!wasLeft) {
    current = &entry;
    work(data);
  }
  current = nullptr;
  return !wasLeft;
}

}  // namespace

bool enter(void (*work)(void* data), void* data) {
  assert(current == nullptr);
  static const bool installed = installHandler();
  Entry entry{};
  entry.number = ++entries;
  const Timer timer(entry.number);
  return installed && timer.runs() && runUntilLeft(entry, work, data);
}

void leave() { siglongjmp(current->wayOut, 1); }

Uninterrupted::Uninterrupted() {
  if (current != nullptr) current->uninterrupted = 1;
  std::atomic_signal_fence(std::memory_order_seq_cst);
}

Uninterrupted::~Uninterrupted() {
  std::atomic_signal_fence(std::memory_order_seq_cst);
  if (current == nullptr) return;
  current->uninterrupted = 0;
  if (current->timeIsUp != 0) leave();
}

}  // namespace quorvane::script
