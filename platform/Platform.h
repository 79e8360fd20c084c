#pragma once
// Everything that the logic asks for, gathered by `main` or by a test. All references outlive the
// Instance that is made with them.

#include <functional>

#include "platform/Alerts.h"
#include "platform/AppleEvents.h"
#include "platform/Application.h"
#include "platform/Bundle.h"
#include "platform/CarbonEvents.h"
#include "platform/CharacterSets.h"
#include "platform/Clock.h"
#include "platform/Console.h"
#include "platform/DateFormatting.h"
#include "platform/EventPosting.h"
#include "platform/FileManager.h"
#include "platform/InputMethodKit.h"
#include "platform/JSONSerialization.h"
#include "platform/LaunchServices.h"
#include "platform/LogSink.h"
#include "platform/MessagePorts.h"
#include "platform/ProcessManager.h"
#include "platform/ResourceManager.h"
#include "platform/RunLoop.h"
#include "platform/Screens.h"
#include "platform/ScriptHost.h"
#include "platform/SharedMemory.h"
#include "platform/SpellChecker.h"
#include "platform/TextEncoding.h"
#include "platform/TextInputSources.h"
#include "platform/TextServicesManager.h"
#include "platform/UnicodeUtilities.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

namespace quorvane {

struct Platform {
  Alerts& alerts;
  AppleEvents& appleEvents;
  Application& application;
  Bundle& bundle;
  CarbonEvents& carbonEvents;
  CharacterSets& characterSets;
  Clock& clock;
  Console& console;
  DateFormatting& dateFormatting;
  EventPosting& eventPosting;
  FileManager& fileManager;
  InputMethodKit& inputMethodKit;
  JSONSerialization& jsonSerialization;
  LaunchServices& launchServices;
  LogSink& log;
  MessagePorts& messagePorts;
  ProcessManager& processManager;
  ResourceManager& resourceManager;
  RunLoop& runLoop;
  Screens& screens;
  ScriptHost& scriptHost;
  SharedMemory& sharedMemory;
  SpellChecker& sharedSpellChecker;
  TextEncoding& textEncoding;
  TextInputSources& textInputSources;
  TextServicesManager& textServicesManager;
  UnicodeUtilities& unicodeUtilities;
  UserDefaults& userDefaults;
  Workspace& workspace;
};

/// The parts of a platform that come with the clients, whoever makes the others.
struct ClientParts {
  CarbonEvents& carbonEvents;
  EventPosting& eventPosting;
  InputMethodKit& inputMethodKit;
  NibOutlets annotationWindow;
  std::function<bool()> isWithinKey;  ///< a key waits for its end meanwhile
  Seconds longestWithinKey{2};        ///< that it may wait for somebody else
};

}  // namespace quorvane
