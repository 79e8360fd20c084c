#pragma once
// One run of `type`: a document, the whole input method, and the stand-in main application beside
// it in a process of its own.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "apps/Observed.h"
#include "apps/StandIn.h"
#include "apps/TypeApplication.h"
#include "apps/TypeOptions.h"
#include "apps/TypeSurroundings.h"
#include "apps/TypeTrace.h"
#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/TextApplication.h"
#include "src/base/Process.h"
#include "src/completion/InputController.h"

namespace quorvane {

class TypeSession {
 public:
  /// Throws where runtime folder or stand-in can't be had, with a message that says what to do.
  explicit TypeSession(const TypeOptions& options);
  ~TypeSession();
  TypeSession(const TypeSession&) = delete;
  TypeSession& operator=(const TypeSession&) = delete;

  /// Starts the input method and types; the document is complete when it returns. Throws where the
  /// stand-in or the input method doesn't start.
  void run(std::u32string_view text);
  [[nodiscard]] const std::u16string& document() const { return document_.text(); }
  /// The signal that asked for an early end; 0: none.
  [[nodiscard]] int signal() const { return signal_; }

 private:
  [[nodiscard]] Platform platform();
  void observe();
  void watchSignals();
  void interrupted(int signal);

  void awaitStandIn();
  void typeAll();
  void typeOne(char32_t character);
  void pause();
  void settle();
  void awaitLastFixes();
  void cleanUp();

  TypeOptions options_;
  TypeTrace trace_;
  TypeSurroundings surroundings_;
  std::unique_ptr<StandIn> standIn_;  ///< null: without
  field::EventQueue events_;
  desktop::Descriptor nowhere_;
  desktop::DesktopConfiguration configuration_;
  desktop::DesktopHost host_;
  ObservedMessagePorts messagePorts_;
  ObservedSharedMemory sharedMemory_;
  TypeApplication application_;
  Process process_;
  InputController controller_;
  field::TextApplication textApplication_;
  field::Document& document_;
  std::vector<std::unique_ptr<Registration>> signalWatches_;
  std::unique_ptr<Registration> announcement_;
  std::u32string_view text_;
  std::uint64_t packets_ = 0;  ///< received so far
  int signal_ = 0;
};

}  // namespace quorvane
