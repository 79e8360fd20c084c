#pragma once
// The application object, its nibs and its process.

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/AppKitWindows.h"
#include "platform/NSMenu.h"
#include "platform/Registration.h"

namespace quorvane {

struct NSOperatingSystemVersion {
  std::int64_t majorVersion = 0;
  std::int64_t minorVersion = 0;
};

/// What a nib's objects are connected to; null where the nib holds no such thing. All live as long
/// as the host.
struct NibOutlets {
  NSPanel* panel = nullptr;
  NSTextField* view = nullptr;
  NSMenu* menu = nullptr;
};

enum class NSApplicationNotification { DidBecomeActive, DidHide };

class Application {
 public:
  virtual ~Application() = default;

  /// -[NSProcessInfo beginActivityWithOptions:reason:]. False where the system hasn't got it.
  virtual bool respondsToBeginActivity() = 0;
  virtual void beginActivityWithOptions(std::uint64_t options, std::string_view reason) = 0;
  virtual std::string bundleIdentifier() = 0;
  /// The text of the main bundle's URL, as CFURLGetString gives it.
  virtual std::string bundleURL() = 0;
  /// Loads a nib of the main bundle. `awakeFromNib` stands for the objects inside: the host calls
  /// it once they exist. False where there is no such nib.
  virtual bool loadNibNamed(std::string_view name,
                            std::function<void(const NibOutlets&)> awakeFromNib) = 0;
  /// Of this application alone (object NSApp); the observer is called on the run loop.
  [[nodiscard]] virtual std::unique_ptr<Registration> addObserver(
      NSApplicationNotification name, std::function<void()> observer) = 0;
  /// -[NSApplication run]: returns when the application stops.
  virtual void run() = 0;
  /// Ends the process, leaving nothing behind. A host of tests returns from it.
  virtual void exit(int status) = 0;
  virtual double NSAppKitVersionNumber() = 0;
  /// -[NSProcessInfo operatingSystemVersion].
  virtual NSOperatingSystemVersion operatingSystemVersion() = 0;
};

}  // namespace quorvane
