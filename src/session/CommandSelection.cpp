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

bool isChord(const NSEvent& event) {
  return (event.modifierFlags & NSEventModifierFlagCommand) != 0;
}

/// Paste, cut and erase. With option the key of paste makes another character.
bool replacesSelection(const NSEvent& chord) {
  constexpr std::string_view kReplacing = "VXvx\x08\x7f";
  constexpr std::uint16_t kUsualPasteKey = 9;
  const std::uint8_t byte = firstUtf8Byte(chord.characters);
  return (byte >= 0x80 && chord.keyCode == kUsualPasteKey) ||
         kReplacing.find(static_cast<char>(byte)) != std::string_view::npos;
}

std::uint32_t commandsOver(Instance& instance) {
  return instance.state<PendingCommandState>().commandsOver;
}

/// How many will have run before a command that is chosen now.
std::uint32_t commandsBeforeNext(Instance& instance) {
  return commandsOver(instance) + (IsMenuCallEvent(instance) != 0 ? 1 : 0);
}

void noteCaret(Instance& instance, IMKTextInput& client) {
  auto& state = instance.state<CommandSelectionState>();
  --state.expected;
  const auto [location, length] = client.selectedRange();
  if (location == NSNotFound) return;
  const auto [entry, isNew] = state.selections.try_emplace(identityOf(&client));
  if (isNew || length == 0) entry->second = {location + length, commandsBeforeNext(instance)};
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
void guardFromChord(Instance& instance, const NSEvent& event, IMKTextInput& client) {
  const auto& selections = instance.state<CommandSelectionState>().selections;
  const auto selection = selections.find(identityOf(&client));
  if (selection == selections.end()) return;
  const bool early =
      isCommandWaiting(instance) && selection->second.commandsOver >= commandsOver(instance);
  const bool replaces = replacesSelection(event);
  if (replaces && early) return giveSelectionBack(instance, client);
  const bool selectsAll = firstUtf8Byte(event.characters) == 'a';
  if (replaces || selectsAll) leaveSelection(instance, client);
}

}  // namespace

void selectAllForCommand(Instance& instance) {
  keepTypedWord(instance);
  dropCopyingCommand(instance);
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
  if (!isChord(event)) return giveSelectionBack(instance, *client);
  const bool isSelectAll = firstUtf8Byte(event.characters) == 'a';
  if (isSelectAll && state.expected != 0) return noteCaret(instance, *client);
  guardFromChord(instance, event, *client);
}

void dropWaitingCommand(Instance& instance) {
  if (!giveUpCommand(instance)) return;
  Do_BIM_CallDirectQorvToolCommandAppEvent(instance, kRestoreClipboardCommand);
}

void giveSelectionBack(Instance& instance, IMKTextInput& client) {
  const auto node = takeSelection(instance, client);
  if (node.empty()) return;
  const auto [location, length] = client.selectedRange();
  if (location == NSNotFound || length == 0) return;
  Log(instance, "Selection of a command given back");
  client.insertText({}, {std::min(node.mapped().caret, location + length), 0});
  instance.platform().inputMethodKit.ownTextFollows();
  dropWaitingCommand(instance);
}

}  // namespace quorvane
