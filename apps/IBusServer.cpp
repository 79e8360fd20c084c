#include "apps/IBusServer.h"

#include "apps/Utf8Input.h"
#include "hosts/menu/MenuTracking.h"
#include "src/base/Log.h"
#include "src/base/Text.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/session/CommandSelection.h"
#include "src/session/FixGuard.h"

namespace quorvane {
namespace {

constexpr Seconds kQuiet{0.06};

}  // namespace

IBusServer::IBusServer(RunningSystem& system)
    : system_(system),
      applications_(system.host().processRegistry(), system.front(), system.dataFolder()),
      pressed_(engine_, system.host().runLoop(), pressedKeysParts()),
      contexts_(system.textApplication(), pressed_, attendants()),
      panel_(system.field(), engine_) {
  engine_.disconnected = [this] { over_ = true; };
  system.tellOfFields = [this](desktop::InputMethodStatus& status) {
    status.field = contexts_.kind();
    status.editsLeftOut = contexts_.leftOut();
  };
}

ibus::Attendants IBusServer::attendants() {
  return {
      .session = [this] { return shownBeforeCaret(system_.instance()); },
      .keyBegins =
          [this] {
            latestKey_ = std::chrono::steady_clock::now();
            system_.keyBegins();
          },
      .isQuiet = [this] { return isQuiet(); },
      .catchUp = [this] { system_.settle(); },
      .toFront =
          [this](std::string_view client) {
            applications_.toFront(client);
            if (system_.front().update()) system_.settle();
          },
      .completes =
          [this] {
            const auto& flags = system_.instance().state<CurrentAppFlags>();
            return (flags.CURRENTAPPFLAGSTATUS & kCompletionFlag) != 0;
          },
      .leftOut =
          [this](ibus::EditFault why) { Log(system_.instance(), "edit left out: ", nameOf(why)); }};
}

ibus::PressedKeysParts IBusServer::pressedKeysParts() {
  return {.client = [this] { return contexts_.client(); },
          .field = [this] { return contexts_.path(); },
          .copied =
              [this](const std::string& utf8) {
                return system_.textApplication().clipboard().copy(
                    toUtf16(decodeUtf8Leniently(utf8)), field::CopiedFor::Command);
              },
          .toPaste =
              [this] {
                field::Clipboard& clipboard = system_.textApplication().clipboard();
                return toUtf8(clipboard.takeForCommand());
              },
          .failed = [this](std::string_view why) { giveUp(why); }};
}

ibus::PanelEvents IBusServer::panelEvents() {
  const auto then = [this](const auto& act) {
    system_.textApplication().callController([&](IMKInputController&) { act(); });
    turn();
  };
  return {.candidateClicked = [=, this](std::uint32_t index) { then([&] { panel_.pick(index); }); },
          .cursorMoved = [=, this](bool forward) { then([&] { panel_.move(forward); }); },
          .pageTurned = [=, this](bool forward) { then([&] { panel_.turnPage(forward); }); },
          .propertyActivated = [this](const std::string& name) { choose(name); },
          .focusCame =
              [this] {
                panel_.forget();
                registerMenu();
              }};
}

/// Keys come from the first moment on, and pass until the input method is ready for them: its start
/// may wait for others.
void IBusServer::run(bool again) {
  engine_.serve(contexts_, panelEvents());
  if (again) engine_.comeBack();
  system_.run([this] {
    system_.host().runLoop().runUntil([this] { return turn(); }, desktop::RunLoop::Deadline::max());
  });
}

bool IBusServer::isQuiet() {
  const bool quiet = std::chrono::steady_clock::now() - latestKey_ >= kQuiet;
  if (quiet) {
    quiet_.reset();
  } else if (quiet_ == nullptr) {
    quiet_ = system_.host().runLoop().addTimer(kQuiet, Seconds{}, [this] {
      quiet_.reset();
      turn();
    });
  }
  return quiet;
}

bool IBusServer::turn() {
  system_.restoreSiblings();
  system_.settle();
  contexts_.settle();
  panel_.update();
  return over_ || system_.signal() != 0;
}

/// By what the menu is now, which opening it brings about.
void IBusServer::choose(const std::string& property) {
  contexts_.attend();
  system_.textApplication().callController([&](IMKInputController& controller) {
    MenuTracking tracking(controller);
    NSMenuItem* const item =
        tracking.menu() != nullptr ? menu_.find(*tracking.menu(), property) : nullptr;
    if (item != nullptr) tracking.choose(*item);
  });
  registerMenu();
}

void IBusServer::giveUp(std::string_view why) {
  dropWaitingCommand(system_.instance());
  Log(system_.instance(), "command given up: ", why);
  told_ = desktop::Notification::show({.messageText = "The command was given up",
                                       .informativeText = std::string(why),
                                       .buttons = {"OK"}});
}

void IBusServer::registerMenu() {
  system_.textApplication().callController(
      [this](IMKInputController& controller) { engine_.showProperties(menu_.make(controller)); });
}

}  // namespace quorvane
