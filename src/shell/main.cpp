#include "src/shell/main.h"

#include "src/base/Log.h"
#include "src/completion/AnnotationWinController.h"
#include "src/completion/CompletionState.h"
#include "src/completion/ConversionEngine.h"
#include "src/shell/QuorvaneInputAppDelegate.h"

namespace quorvane {
namespace {

constexpr std::uint64_t kUserInitiatedLatencyCritical = 0xff00ffffff;
constexpr std::string_view kConnectionName = "QuorvaneInput_1_Connection";

// Keeps the resident server out of App Nap. The token isn't kept.
void beginActivity(Process& process) {
  Application& application = process.platform().application;
  if (!application.respondsToBeginActivity()) return;
  application.beginActivityWithOptions(kUserInitiatedLatencyCritical, "Quorvane ARC7 nap!");
}

int install(Process& process) {
  registerInputSource(process);
  deactivateInputSource(process);  // before the activation on purpose
  activateInputSource(process);
  return 0;
}

// The window's controller wakes with its nib.
void wakeAnnotationWindow(Process& process, const NibOutlets& outlets) {
  auto& controller = process.state<AnnotationWinController>();
  controller.setPanel(outlets.panel);
  controller.setView(outlets.view);
  controller.awakeFromNib();
}

}  // namespace

int InputMethodMain(Process& process, const std::vector<std::string>& arguments) {
  Application& application = process.platform().application;
  beginActivity(process);
  if (!arguments.empty() && arguments.front() == "--install") return install(process);
  if (init_inputmenu_server(process) == nullptr) return -1;
  process.state<CompletionState>().engine = &ConversionEngine::sharedEngine(process);
  application.loadNibNamed("AnnotationWindow", [&process](const NibOutlets& outlets) {
    wakeAnnotationWindow(process, outlets);
  });
  initPreference(process);
  application.loadNibNamed("MainMenu", [&process](const NibOutlets& /*outlets*/) {
    process.state<QuorvaneInputAppDelegate>().awakeFromNib();
  });
  application.run();
  return 0;
}

IMKCandidates* init_inputmenu_server(Process& process) {
  InputMethodKit& kit = process.platform().inputMethodKit;
  auto& state = process.state<CompletionState>();
  state.server =
      kit.initWithName(kConnectionName, process.platform().application.bundleIdentifier());
  const bool vertical = Get_GlobalAutoCompleteFlag(process, 1) != 0;
  state.sharedCandidates =
      kit.initWithServer(state.server.get(), vertical ? IMKCandidatePanelType::SingleColumnScrolling
                                                      : IMKCandidatePanelType::SingleRowStepping);
  Log(process, vertical ? "verticalCandidate: YES" : "verticalCandidate: NO");
  if (!state.sharedCandidates) {
    Log(process, "Fatal error: Cannot initialize shared candidate panel with connection ",
        kConnectionName, ".");
  }
  return state.sharedCandidates.get();
}

std::uint8_t Get_GlobalAutoCompleteFlag(Process& process, std::size_t index) {
  const auto& flags = process.state<MainState>().GlobalAutoCompleteFlags;
  return index < flags.size() ? flags[index] : std::uint8_t{0};
}

void initPreference(Process& process) {
  UserDefaults& preference = process.platform().userDefaults;
  process.state<CompletionState>().preference = &preference;
  preference.setBool(Get_GlobalAutoCompleteFlag(process, 0) != 0, "commitWordWithSpace");
  preference.setBool(false, "showTranslation");
  preference.setBool(Get_GlobalAutoCompleteFlag(process, 1) != 0, "verticalCandidate");
  preference.setBool(Get_GlobalAutoCompleteFlag(process, 2) != 0, "ShiftKeyToggle");
}

}  // namespace quorvane
