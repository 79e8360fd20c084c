#pragma once
// The Linux desktop under the logic: owns one of everything that a Platform holds, apart from what
// comes with the text fields.

#include "hosts/desktop/Alerts.h"
#include "hosts/desktop/AppleEvents.h"
#include "hosts/desktop/Application.h"
#include "hosts/desktop/Bundle.h"
#include "hosts/desktop/Clock.h"
#include "hosts/desktop/Console.h"
#include "hosts/desktop/DesktopConfiguration.h"
#include "hosts/desktop/FileManager.h"
#include "hosts/desktop/LaunchServices.h"
#include "hosts/desktop/LogSink.h"
#include "hosts/desktop/MessagePorts.h"
#include "hosts/desktop/ProcessManager.h"
#include "hosts/desktop/ProcessRegistry.h"
#include "hosts/desktop/ResourceManager.h"
#include "hosts/desktop/RunLoop.h"
#include "hosts/desktop/RuntimeFolder.h"
#include "hosts/desktop/Screens.h"
#include "hosts/desktop/SharedMemory.h"
#include "hosts/desktop/SpellChecker.h"
#include "hosts/desktop/Supervisor.h"
#include "hosts/desktop/TextInputSources.h"
#include "hosts/desktop/TextServicesManager.h"
#include "hosts/desktop/UserDefaults.h"
#include "hosts/desktop/Workspace.h"
#include "hosts/icu/IcuCharacterSets.h"
#include "hosts/icu/IcuDateFormatting.h"
#include "hosts/icu/IcuTextEncoding.h"
#include "hosts/json/SimdjsonSerialization.h"
#include "hosts/keyboard/Translate.h"
#include "hosts/script/DuktapeScriptHost.h"
#include "platform/Platform.h"

namespace quorvane::desktop {

class DesktopHost {
 public:
  /// Throws std::runtime_error, with a message that says what to do, where the runtime folder can't
  /// be used. All hosts of a process share GLib's default main context.
  DesktopHost(const DesktopConfiguration& configuration, const ClientParts& clients);
  /// Leaves nothing behind.
  ~DesktopHost();
  DesktopHost(const DesktopHost&) = delete;
  DesktopHost& operator=(const DesktopHost&) = delete;

  [[nodiscard]] Platform platform();
  [[nodiscard]] SharedMemory& sharedMemory() { return sharedMemory_; }
  [[nodiscard]] RunLoop& runLoop() { return runLoop_; }
  [[nodiscard]] ProcessRegistry& processRegistry() { return processRegistry_; }
  [[nodiscard]] Supervisor& supervisor() { return supervisor_; }
  [[nodiscard]] LaunchServices& launchServices() { return launchServices_; }
  [[nodiscard]] Alerts& alerts() { return alerts_; }
  [[nodiscard]] Application& application() { return application_; }
  [[nodiscard]] Screens& screens() { return screens_; }
  [[nodiscard]] LogSink& log() { return log_; }
  /// Of the keys that a person presses; asked for at each of them.
  [[nodiscard]] keyboard::LayoutData keyboardLayout() { return textInputSources_.keyboardLayout(); }

  /// Takes an open alert off the screen, ends what it has launched, where that doesn't outlive it,
  /// removes announcement, sockets and segments of this process, in that order, and flushes the
  /// log. For the ends that no destructor sees; doing it twice does no harm.
  void cleanUp();

 private:
  ClientParts clients_;
  LogSink log_;
  RunLoop runLoop_;
  RuntimeFolder folder_;
  SharedMemory sharedMemory_;
  MessagePorts messagePorts_;
  ProcessRegistry processRegistry_;
  ProcessManager processManager_{processRegistry_};
  Supervisor supervisor_;
  Workspace workspace_{processRegistry_, supervisor_};
  Alerts alerts_{runLoop_, log_};
  AppleEvents appleEvents_;
  Application application_;
  Bundle bundle_;
  IcuCharacterSets characterSets_;
  Clock clock_;
  Console console_;
  IcuDateFormatting dateFormatting_;
  FileManager fileManager_;
  LaunchServices launchServices_{fileManager_, supervisor_, runLoop_};
  SimdjsonSerialization jsonSerialization_{fileManager_};
  ResourceManager resourceManager_;
  Screens screens_;
  DuktapeScriptHost scriptHost_;
  SpellChecker spellChecker_;
  IcuTextEncoding textEncoding_;
  TextInputSources textInputSources_;
  TextServicesManager textServicesManager_;
  keyboard::Translator unicodeUtilities_;
  UserDefaults userDefaults_;
};

}  // namespace quorvane::desktop
