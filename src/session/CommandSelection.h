#pragma once
// What a command of the Input Menu has selected, by Select All, isn't what the person chose:
// nothing that is typed or inserted next may take its place. The caret goes back to where it was,
// and the command, if it still waits, is given up.

#include <map>

#include "src/session/QBIM_IMK_SessionRecord.h"

namespace quorvane {

struct CommandSelectionState {
  struct Selection {
    std::uint64_t caret = 0;         ///< where it was before
    std::uint32_t commandsOver = 0;  ///< before its own; see PendingCommandState
  };
  std::uint32_t expected = 0;                ///< how often Select All is on its way to a client
  std::map<ClientID, Selection> selections;  ///< by the clients whose text it has selected
};

/// Has the client select all. A word in progress ends first.
void selectAllForCommand(Instance& instance);
/// An event, before anybody handles it. `client` may be null.
void guardCommandSelection(Instance& instance, const NSEvent& event, IMKTextInput* client);
/// The command that waits doesn't run, and whoever has readied something for it takes that back.
void dropWaitingCommand(Instance& instance);
/// Somebody is about to insert into the client.
void giveSelectionBack(Instance& instance, IMKTextInput& client);

}  // namespace quorvane
