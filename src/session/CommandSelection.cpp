#include "src/session/CommandSelection.h"

#include <algorithm>
#include <string_view>

#include "src/base/KeyBytes.h"
#include "src/base/Log.h"
#include "src/base/Text.h"
#include "src/bridge/SharedLayout.h"
#include "src/bridge/ToolCalls.h"
#include "src/keys/QBIM_IMK_EventPosting.h"
#include "src/menu/PendingCommand.h"
#include "src/session/WordInProgress.h"

namespace quorvane {
namespace {

/// With the command key: paste, cut and erase.
constexpr std::string_view kReplacingChords = "VXvx\x08\x7f";

bool isChord(const NSEvent& event) {
  return (event.modifierFlags & NSEventModifierFlagCommand) != 0;
}

std::uint32_t commandsRun(Instance& instance) {
  return instance.state<PendingCommandState>().commandsRun;
}

void noteCaret(Instance& instance, IMKTextInput& client) {
  auto& state = instance.state<CommandSelectionState>();
  --state.expected;
  const auto [location, length] = client.selectedRange();
  if (location == NSNotFound) return;
  const auto [entry, isNew] = state.selections.try_emplace(identityOf(&client));
  if (isNew || length == 0) entry->second = {location + length, commandsRun(instance)};
}

// A command that is under way was about what is selected.
auto takeSelection(Instance& instance, IMKTextInput& client) {
  auto node = instance.state<CommandSelectionState>().selections.extract(identityOf(&client));
  if (!node.empty()) ++instance.state<ToolCallState>().withdrawals;
  return node;
}

/// From now on it is the person's.
void leaveSelection(Instance& instance, IMKTextInput& client) { takeSelection(instance, client); }

// Once the command has run, a chord is its answer, or what the person wants done to what they see,
// even where the next command waits by then.
void guardFromChord(Instance& instance, std::uint8_t keyByte, IMKTextInput& client) {
  const auto& selections = instance.state<CommandSelectionState>().selections;
  const auto selection = selections.find(identityOf(&client));
  if (selection == selections.end()) return;
  const bool early =
      isCommandWaiting(instance) && selection->second.commandsRun == commandsRun(instance);
  const bool replaces = kReplacingChords.find(static_cast<char>(keyByte)) != std::string_view::npos;
  if (replaces && early) return giveSelectionBack(instance, client);
  if (replaces || keyByte == 'a') leaveSelection(instance, client);
}

}  // namespace

void selectAllForCommand(Instance& instance) {
  keepTypedWord(instance);
  ++instance.state<CommandSelectionState>().expected;
  PostCommandKey(instance, 'a');
}

void guardCommandSelection(Instance& instance, const NSEvent& event, IMKTextInput* client) {
  auto& state = instance.state<CommandSelectionState>();
  if (client == nullptr || (state.expected == 0 && state.selections.empty())) return;
  if (event.type == NSEventType::LeftMouseDown) {
    state.expected = 0;  // it went elsewhere
    leaveSelection(instance, *client);
  }
  if (event.type != NSEventType::KeyDown) return;
  const std::uint8_t keyByte = firstUtf8Byte(event.characters);
  if (!isChord(event)) return giveSelectionBack(instance, *client);
  if (keyByte == 'a' && state.expected != 0) return noteCaret(instance, *client);
  guardFromChord(instance, keyByte, *client);
}

void giveSelectionBack(Instance& instance, IMKTextInput& client) {
  const auto node = takeSelection(instance, client);
  if (node.empty()) return;
  const auto [location, length] = client.selectedRange();
  if (location == NSNotFound || length == 0) return;
  Log(instance, "Selection of a command given back");
  client.insertText({}, {std::min(node.mapped().caret, location + length), 0});
  instance.platform().inputMethodKit.ownTextFollows();
  if (!giveUpCommand(instance)) return;
  Do_BIM_CallDirectQorvToolCommandAppEvent(instance, kRestoreClipboardCommand);
}

}  // namespace quorvane
