#include "hosts/memory/MemoryHost.h"

#include <algorithm>

namespace quorvane::memory {

MemoryHost::MemoryHost() {
  carbonEvents.latestModifiers = [this] { return text.currentKeyModifiers(); };
  carbonEvents.heldKeys = [this] { return text.heldKeys(); };
  useLayout(keyboard::usLayout());
  dateFormatting.locale = "en_US";
  dateFormatting.systemTimeZone = "UTC";
  queue.layout = [this] {
    const TISInputSourceRef& layout = textInputSources.layout;
    return layout ? layout->kTISPropertyUnicodeKeyLayoutData : nullptr;
  };
  queue.mouseLocation = [this] { return screens.mouse; };
  // The documents are those of whatever is in front.
  queue.reaches = [this](const ProcessSerialNumber& psn) {
    return psn != ProcessSerialNumber{} && psn == processes.front();
  };
  inputMethodKit.connect(
      text, [this] { return std::span<const NSRect>(screens.frames); },
      [this] { return application.systemVersion; });
  messagePorts.whileWaiting = [this] { processes.deliverNotifications(); };
  text.onClientCall = [this](const field::ClientCall& call) {
    if (journal.recording()) {
      journal.call(field::describe(call));
    } else {
      journal.count();
    }
  };
}

Platform MemoryHost::platform() {
  return {
      .alerts = alerts,
      .appleEvents = appleEvents,
      .application = application,
      .bundle = bundle,
      .carbonEvents = carbonEvents,
      .characterSets = characterSets,
      .clock = clock,
      .console = console,
      .dateFormatting = dateFormatting,
      .eventPosting = eventPosting,
      .fileManager = files,
      .inputMethodKit = inputMethodKit,
      .jsonSerialization = jsonSerialization,
      .launchServices = launchServices,
      .log = log,
      .messagePorts = messagePorts,
      .processManager = processes,
      .resourceManager = resources,
      .runLoop = messagePorts,
      .screens = screens,
      .scriptHost = scriptHost,
      .sharedMemory = sharedMemory,
      .sharedSpellChecker = spellChecker,
      .textEncoding = textEncoding,
      .textInputSources = textInputSources,
      .textServicesManager = textServicesManager,
      .unicodeUtilities = unicodeUtilities,
      .userDefaults = userDefaults,
      .workspace = processes,
  };
}

void MemoryHost::useLayout(const keyboard::LayoutData& layout) {
  textInputSources.layout = std::make_shared<TISInputSource>(
      TISInputSource{"keyboard-layout", "Keyboard layout", true, layout});
}

void MemoryHost::wait(std::uint64_t nanoseconds) {
  const std::uint64_t end = clock.now() + nanoseconds;
  while (clock.now() < end) {
    const std::uint64_t left = end - clock.now();
    clock.advance(std::min(clock.untilNext().value_or(left), left));
    if (messagePorts.hasDue()) runPending();
  }
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
