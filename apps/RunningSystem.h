#pragma once
// The whole input method under one document, which launches the main application beside it; or the
// user's resident one, under documents that others add.

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "apps/EndSignals.h"
#include "apps/FrontApplication.h"
#include "apps/Observed.h"
#include "apps/OwnApplication.h"
#include "apps/OwnSurroundings.h"
#include "apps/StatusKeeper.h"
#include "apps/SystemOptions.h"
#include "hosts/desktop/DesktopHost.h"
#include "hosts/desktop/HurriedClock.h"
#include "hosts/field/FieldParts.h"
#include "hosts/field/TextApplication.h"
#include "src/base/Instance.h"
#include "src/completion/InputController.h"

namespace quorvane {

/// How long the run loop turns at a time.
inline constexpr std::chrono::milliseconds kTurn{10};

class RunningSystem {
 public:
  /// Throws where the runtime folder can't be had, with a message that says what to do.
  explicit RunningSystem(const SystemOptions& options);
  ~RunningSystem() { cleanUp(); }
  RunningSystem(const RunningSystem&) = delete;
  RunningSystem& operator=(const RunningSystem&) = delete;

  /// Starts the input method, unless another one was first, gives the document the focus, and calls
  /// `body`, whose end is the end of it all. Throws where the main application or the input method
  /// doesn't start, and what `body` throws.
  void run(std::function<void()> body);
  /// Everything that waits is handled: messages, notifications, posted events. What is posted finds
  /// the right application in front.
  void settle();
  /// Siblings that crashed or were killed are started again. Between keys.
  void restoreSiblings();

  [[nodiscard]] desktop::DesktopHost& host() { return host_; }
  [[nodiscard]] Instance& instance() { return instance_; }
  [[nodiscard]] InputController& controller() { return controller_; }
  [[nodiscard]] field::FieldParts& field() { return field_; }
  [[nodiscard]] field::TextApplication& textApplication() { return textApplication_; }
  /// Of the resident one's clients: somebody else may keep it waiting for a little while only.
  void keyBegins() { clock_.keyBegins(); }
  /// Not of the resident one, which has none.
  [[nodiscard]] field::Document& document() { return *document_; }
  [[nodiscard]] ObservedMessagePorts& messagePorts() { return messagePorts_; }
  [[nodiscard]] ObservedSharedMemory& sharedMemory() { return sharedMemory_; }
  /// Where the processes of this run meet.
  [[nodiscard]] const std::filesystem::path& runtimeFolder() const {
    return configuration_.runtimeDirectory;
  }
  [[nodiscard]] const std::filesystem::path& dataFolder() const {
    return configuration_.dataDirectory;
  }
  [[nodiscard]] FrontApplication& front() { return front_; }
  /// False: the main application was left out.
  [[nodiscard]] bool hasMainApplication() const { return hasMainApplication_; }
  /// Another input method works on our segments already: every key passes.
  [[nodiscard]] bool standsAside() const { return !claim_.valid(); }
  /// The signal that asked for an early end; 0: none. `body` returns soon after it has come.
  [[nodiscard]] int signal() const { return signal_; }

  /// Comes before the end by `exit`, which no destructor sees.
  std::function<void()> beforeExit;
  /// See StatusKeeper; to be set before `run`.
  std::function<void(desktop::InputMethodStatus&)> tellOfFields;

 private:
  [[nodiscard]] ClientParts clientParts(const SystemOptions& options);
  [[nodiscard]] Platform platform();
  void prepareParameters(const SystemOptions& options);
  void connectKeyboard();
  void watchSignals();
  void interrupted(int signal);
  void requireMainApplication();
  void standAside();
  void begin();
  void exiting();
  void cleanUp();

  std::optional<HeldEndSignals> held_{std::in_place};  ///< until the signals are watched
  std::optional<OwnSurroundings> surroundings_;        ///< none: it is the resident one
  bool hasMainApplication_;
  field::FieldParts field_;
  desktop::Descriptor nowhere_;
  desktop::DesktopConfiguration configuration_;
  desktop::DesktopHost host_;
  desktop::HurriedClock clock_;  ///< of the resident one
  desktop::Descriptor claim_;    ///< to be the input method of our segments
  ObservedMessagePorts messagePorts_;
  ObservedSharedMemory sharedMemory_;
  OwnApplication application_;
  Instance instance_;
  FrontApplication front_;
  InputController controller_;
  field::TextApplication textApplication_;
  field::Document* document_;           ///< null: the fields are others'
  std::optional<StatusKeeper> status_;  ///< none: nothing is handled here
  std::vector<std::unique_ptr<Registration>> signalWatches_;
  std::unique_ptr<Registration> announcement_;
  std::function<void()> body_;
  int signal_ = 0;
};

/// Ends this process as the signal would have ended it, now that everything is cleared away.
int endBySignal(int signal);

}  // namespace quorvane
