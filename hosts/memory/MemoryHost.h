#pragma once
// The whole platform in memory, deterministic: what tests, scenarios and fuzzers stand the input
// method on. Each test makes its own; it outlives the Instance made on it.

#include "hosts/field/TextApplication.h"
#include "hosts/icu/IcuCharacterSets.h"
#include "hosts/icu/IcuDateFormatting.h"
#include "hosts/journal/Journal.h"
#include "hosts/json/SimdjsonSerialization.h"
#include "hosts/keyboard/Translate.h"
#include "hosts/memory/MemoryApplication.h"
#include "hosts/memory/MemoryClock.h"
#include "hosts/memory/MemoryConsole.h"
#include "hosts/memory/MemoryEvents.h"
#include "hosts/memory/MemoryFiles.h"
#include "hosts/memory/MemoryInputMethodKit.h"
#include "hosts/memory/MemoryMainApplication.h"
#include "hosts/memory/MemoryMessagePorts.h"
#include "hosts/memory/MemoryProcesses.h"
#include "hosts/memory/MemoryResources.h"
#include "hosts/memory/MemorySharedMemory.h"
#include "hosts/memory/MemorySpellChecker.h"
#include "hosts/memory/MemoryTextServices.h"
#include "hosts/memory/Placeholders.h"
#include "hosts/script/DuktapeScriptHost.h"
#include "platform/Platform.h"

namespace quorvane::memory {

/// Client calls on the documents of `text` count as platform calls and are in the journal.
class MemoryHost {
 public:
  MemoryHost();
  MemoryHost(const MemoryHost&) = delete;
  MemoryHost& operator=(const MemoryHost&) = delete;

  [[nodiscard]] Platform platform();
  /// Lets time pass, stopping where a timer falls due for a turn of the run loop.
  void wait(std::uint64_t nanoseconds);
  /// A turn of the run loop: workspace notifications, then messages, then posted events, until
  /// nothing waits or the limits of one turn are reached.
  void runPending();
  /// From now on the keyboard has this layout; null: none.
  void useLayout(const keyboard::LayoutData& layout);

  Journal journal;
  NoAlerts alerts;
  NoAppleEvents appleEvents;
  NoLaunchServices launchServices;
  MemoryClock clock{journal};
  MemoryConsole console{journal};
  IcuDateFormatting dateFormatting;  ///< American, and of UTC at first
  MemoryLogSink log;
  MemoryApplication application{journal};
  MemoryUserDefaults userDefaults{journal};
  MemoryFileManager files;
  MemoryBundle bundle{files};
  SimdjsonSerialization jsonSerialization{files};
  DuktapeScriptHost scriptHost;
  MemorySpellChecker spellChecker{journal};
  IcuCharacterSets characterSets;
  MemoryInputMethodKit inputMethodKit{&journal};
  MemoryProcesses processes{journal};
  MemorySharedMemory sharedMemory{journal};
  MemoryMessagePorts messagePorts{journal, clock};
  MemoryResources resources{journal, files};
  MemoryScreens screens{journal};
  MemoryTextEncoding textEncoding{journal};
  MemoryTextInputSources textInputSources{journal};
  MemoryTextServicesManager textServicesManager{journal};
  keyboard::Translator unicodeUtilities{&journal};
  field::EventQueue queue;
  MemoryEventPosting eventPosting{journal, queue};
  MemoryCarbonEvents carbonEvents{journal};
  field::TextApplication text{clock.quiet(), log, queue};
  MemoryMainApplication mainApplication{clock, sharedMemory, processes, messagePorts};
};

}  // namespace quorvane::memory
