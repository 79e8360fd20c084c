#pragma once
// Commands that wait: for the client to answer the keys that were pressed for them, and for the
// keys around them to settle. Ticks of a quarter of a second, counted; nothing blocks.
//
//   command        +0.45 s    +1.2 s            then 3 ticks, or as many more as command keys were
//   ...............key........is pending........pressed; each key event meanwhile counts as one
//                                               .......runs

#include <memory>

#include "src/base/Instance.h"

namespace quorvane {

struct PendingCommandState {
  // A key, and a command that becomes pending behind it.
  std::uint32_t docommandID = 0;
  std::uint16_t doKeyChar = 0;  ///< 0: none
  std::uint32_t doloopcount = 0;
  std::unique_ptr<Registration> doQorvEventLoopTimer;  ///< null: it doesn't run
  bool doRecursion = false;

  // The pending command.
  std::uint32_t MenuCallEvent = 0;  ///< without a tool record, which else holds it
  std::uint32_t loopcount = 0;
  std::uint32_t TotalLoops = 0;
  std::unique_ptr<Registration> QorvEventLoopTimer;  ///< null: it doesn't run
  bool recursion = false;
  std::uint32_t commandsOver = 0;  ///< that waited, run or dropped
};

/// Presses command and `keyChar`, unless that is 0, then has the command pending. While one waits
/// the new one takes its place, and the count goes on, but begins anew where a key has been pressed
/// for the old one: what that has copied isn't what the new one is about.
void doInstallCommandEventTimer(Instance& instance, std::uint32_t commandID, std::uint16_t keyChar);
void Post_CommandKey_MenuCommand(Instance& instance, std::uint16_t keyChar,
                                 std::uint32_t commandID);
void doCallQuorvaneToolOnCheckEventCompletion(Instance& instance);

/// The command is pending from now on; 0: nothing happens.
void PostMenuCommand(Instance& instance, std::uint32_t commandID);
void SetMenuCallEvent(Instance& instance, std::uint32_t commandID);
/// The pending command; 0: none.
std::uint32_t IsMenuCallEvent(Instance& instance);
void InstallCommandEventTimer(Instance& instance);
/// From the start of its wait for a key until it runs.
[[nodiscard]] bool isCommandWaiting(Instance& instance);
/// The command that waits doesn't run. False: none of its keys has filled the clipboard.
bool giveUpCommand(Instance& instance);
/// A pending command that is about what its key has copied doesn't run: that will be something
/// else.
void dropCopyingCommand(Instance& instance);
/// One step of the wait. The last one runs the command.
void CallQuorvaneToolOnCheckEventCompletion(Instance& instance);
/// A key event while a command is pending: a step, but not the last one while the main application
/// doesn't run. 0.
std::int32_t DoHandleQorvMenuCommandSequence(Instance& instance, std::uint8_t keyByte);

}  // namespace quorvane
