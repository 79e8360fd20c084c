// What no key brings about: two timers watch the mouse and the application in front, and sessions
// go with their application.

#include <algorithm>
#include <array>

#include "src/bridge/Presence.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "src/bridge/ToolCalls.h"
#include "src/bridge/qorv_sharedmem.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/session/QBIM_IMK_Suspension.h"
#include "src/session/QBIM_IMK_WindowClick.h"
#include "src/session/QuorvaneInputController.h"

namespace quorvane {
namespace {

constexpr Seconds kInterval{0.5};
constexpr std::array<std::string_view, 2> kOwnNames{"QuorvaneInput", "Quorvane"};

void houseKeep(Instance& instance) {
  if (instance.state<ControllerState>().INITED_FLAG != 0) Check_App_HouseKeeping(instance);
}

void sampleMouse(Instance& instance) {
  auto& state = instance.state<TimerState>();
  auto& clicks = instance.state<WindowClickState>();
  const bool down = instance.platform().carbonEvents.Button();
  const bool pressed = down && !state.Buttonflag;
  state.Buttonflag = down;
  if (pressed && CHECK_Quorvane_InputMenu(instance)) Get_MouseDown_Cancel(instance);
  if (!down) clicks.lastactivatedsender = clicks.activatedsender;
}

}  // namespace

void QuorvaneInputController::awakeFromNib() {
  Workspace& workspace = instance_.platform().workspace;
  Application& application = instance_.platform().application;
  observers_ = {
      workspace.addObserver(WorkspaceNotification::DidLaunchApplication,
                            [this](const auto& /*its*/) { NSWorkspaceDidLaunchApplication(); }),
      workspace.addObserver(WorkspaceNotification::DidTerminateApplication,
                            [this](const auto& /*its*/) { DidTerminateApplication(); }),
      application.addObserver(NSApplicationNotification::DidBecomeActive,
                              [this] { ApplicationDidBecomeActive(); }),
      application.addObserver(NSApplicationNotification::DidHide,
                              [this] { NSApplicationDidHide(); }),
  };
  Install_Timer();
}

void QuorvaneInputController::Install_Timer() {
  RunLoop& runLoop = instance_.platform().runLoop;
  applicationTimer_ = runLoop.addTimer(kInterval, kInterval, [this] { doApplicationTimer(); });
  mouseTimer_ = runLoop.addTimer(kInterval, kInterval, [this] { doMouseTimer(); });
}

void QuorvaneInputController::doApplicationTimer() {
  CallQuorvaneMenuIconCheckEventCompletion(instance_);
}

void QuorvaneInputController::doMouseTimer() {
  bool& recursion = instance_.state<TimerState>().Mouse_Recurion_Flag;
  if (recursion) return;
  const FlagGuard guard(recursion);
  if (instance_.state<ControllerState>().INITED_FLAG == 0) return;
  sampleMouse(instance_);
  ProcessSwitch_App_CurrentFront(instance_);
}

void QuorvaneInputController::DidTerminateApplication() { houseKeep(instance_); }

void QuorvaneInputController::connectionDidDie() {
  if (IsQUORVANEAPPRUNNING(instance_) == 0) houseKeep(instance_);
}

bool CHECK_Quorvane_InputMenu(Instance& instance) {
  const TISInputSourceRef source =
      instance.platform().textInputSources.TISCopyCurrentKeyboardInputSource();
  return source &&
         std::ranges::find(kOwnNames, source->kTISPropertyLocalizedName) != kOwnNames.end();
}

std::int32_t ProcessSwitch_App_CurrentFront(Instance& instance) {
  std::int32_t& last = instance.state<TimerState>().lastprocessPID;
  const std::int32_t front = get_frontapp_pid(instance);
  if (front == last) return 1;
  last = front;
  bool windowOpen = false;
  if (const ToolRec record(instance); record) {
    if (record.get(ToolCRecPtr_SuspendTotal) != 0) endSuspension(record);
    windowOpen = record.get(ToolCRecPtr_isDocWindowOpen) != kNoWindow;
  }
  if (windowOpen) Do_BIMShowHideWindowSession(instance);
  return 0;
}

// What a change of the application in front asks for is the mouse timer's.
void CallQuorvaneMenuIconCheckEventCompletion(Instance& instance) {
  bool& busy = instance.state<TimerState>().CallQuorvaneMenuIconCheckEventCompletionBusy;
  if (busy) return;
  const FlagGuard guard(busy);
  ISOPENTOOLREC(instance);
  isFrontAppSame(instance);
}

}  // namespace quorvane
