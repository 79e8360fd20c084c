#include "hosts/memory/MemoryHost.h"

namespace quorvane::memory {

MemoryHost::MemoryHost() {
  carbonEvents.latestModifiers = [this] { return text.currentKeyModifiers(); };
  messagePorts.whileWaiting = [this] { processes.deliverNotifications(); };
  text.onClientCall = [this](const field::Document&, const field::ClientCall& call) {
    if (journal.recording()) {
      journal.call(field::describe(call));
    } else {
      journal.count();
    }
  };
}

Platform MemoryHost::platform() {
  return {
      application,         carbonEvents, clock,        console,      eventPosting,
      inputMethodKit,      log,          messagePorts, processes,    resources,
      messagePorts,        screens,      sharedMemory, textEncoding, textInputSources,
      textServicesManager, userDefaults, processes,
  };
}

void MemoryHost::runPending() {
  constexpr int kTurns = 64;
  for (int turn = 0; turn < kTurns; ++turn) {
    processes.deliverNotifications();
    messagePorts.runPending();
    text.deliverPosted();
    if (!processes.notificationsWait() && messagePorts.pending() == 0 && queue.size() == 0) return;
  }
}

}  // namespace quorvane::memory
