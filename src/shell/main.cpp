#include "src/shell/main.h"

#include "src/base/Log.h"
#include "src/completion/AnnotationWinController.h"
#include "src/completion/CompletionState.h"
#include "src/completion/ConversionEngine.h"
#include "src/menu/QBIMEndianCallBacks.h"
#include "src/menu/QBIM_IMK_Params.h"
#include "src/session/QuorvaneInputController.h"
#include "src/shell/MenuDispatch.h"
#include "src/shell/QBIM_IMK_Start.h"
#include "src/shell/QuorvaneInputAppDelegate.h"

namespace quorvane {
namespace {

constexpr std::uint64_t kUserInitiatedLatencyCritical = 0xff00ffffff;
constexpr std::string_view kConnectionName = "QuorvaneInput_1_Connection";

// Keeps the resident server out of App Nap. The token isn't kept.
void beginActivity(Instance& instance) {
  Application& application = instance.platform().application;
  if (!application.respondsToBeginActivity()) return;
  application.beginActivityWithOptions(kUserInitiatedLatencyCritical, "Quorvane ARC7 nap!");
}

int install(Instance& instance) {
  registerInputSource(instance);
  deactivateInputSource(instance);  // before the activation on purpose
  activateInputSource(instance);
  return 0;
}

// The window's controller wakes with its nib.
void wakeAnnotationWindow(Instance& instance, const NibOutlets& outlets) {
  auto& controller = instance.state<AnnotationWinController>();
  controller.setPanel(outlets.panel);
  controller.setView(outlets.view);
  controller.awakeFromNib();
}

void wakeMainMenu(Instance& instance, const NibOutlets& outlets) {
  Install_MenuDispatch(instance);
  auto& delegate = instance.state<QuorvaneInputAppDelegate>();
  delegate.setMenu(outlets.menu);
  delegate.awakeFromNib();
  Get_QuorvaneInputController(instance).awakeFromNib();
}

}  // namespace

int InputMethodMain(Instance& instance, const std::vector<std::string>& arguments) {
  Application& application = instance.platform().application;
  beginActivity(instance);
  if (!arguments.empty() && arguments.front() == "--install") return install(instance);
  Install_CoreEndianInstallFlippers(instance);
  if (init_inputmenu_server(instance) == nullptr) return -1;
  instance.state<CompletionState>().engine = &ConversionEngine::sharedEngine(instance);
  application.loadNibNamed("AnnotationWindow", [&instance](const NibOutlets& outlets) {
    wakeAnnotationWindow(instance, outlets);
  });
  initPreference(instance);
  application.loadNibNamed(
      "MainMenu", [&instance](const NibOutlets& outlets) { wakeMainMenu(instance, outlets); });
  InstallQorvLaunchTimer(instance);
  application.run();
  return 0;
}

IMKCandidates* init_inputmenu_server(Instance& instance) {
  InputMethodKit& kit = instance.platform().inputMethodKit;
  auto& state = instance.state<CompletionState>();
  state.server =
      kit.initWithName(kConnectionName, instance.platform().application.bundleIdentifier());
  const bool vertical = Get_GlobalAutoCompleteFlag(instance, 1) != 0;
  state.sharedCandidates =
      kit.initWithServer(state.server.get(), vertical ? IMKCandidatePanelType::SingleColumnScrolling
                                                      : IMKCandidatePanelType::SingleRowStepping);
  Log(instance, vertical ? "verticalCandidate: YES" : "verticalCandidate: NO");
  if (!state.sharedCandidates) {
    Log(instance, "Fatal error: Cannot initialize shared candidate panel with connection ",
        kConnectionName, ".");
  }
  return state.sharedCandidates.get();
}

void initPreference(Instance& instance) {
  UserDefaults& preference = instance.platform().userDefaults;
  instance.state<CompletionState>().preference = &preference;
  preference.setBool(Get_GlobalAutoCompleteFlag(instance, 0) != 0, "commitWordWithSpace");
  preference.setBool(false, "showTranslation");
  preference.setBool(Get_GlobalAutoCompleteFlag(instance, 1) != 0, "verticalCandidate");
  preference.setBool(Get_GlobalAutoCompleteFlag(instance, 2) != 0, "ShiftKeyToggle");
}

}  // namespace quorvane
