#pragma once
// The order of the whole process.

#include <array>
#include <string>
#include <vector>

#include "src/base/Instance.h"

namespace quorvane {

struct MainState {
  /// Word completion's switches: commit with a space, vertical panel, Shift as a toggle.
  std::array<std::uint8_t, 3> GlobalAutoCompleteFlags{};
};

/// The whole life of the input method, `arguments` without the program's name. The exit status: 0,
/// or -1 where no candidate panel could be made. Throws std::runtime_error without a word list.
int InputMethodMain(Instance& instance, const std::vector<std::string>& arguments);

/// Null: no panel.
IMKCandidates* init_inputmenu_server(Instance& instance);
/// 0 for an index without a flag.
std::uint8_t Get_GlobalAutoCompleteFlag(Instance& instance, std::size_t index);
/// Rewrites the user defaults: an edit of them doesn't survive a start.
void initPreference(Instance& instance);

// The input source: register, choose, and let go.
void registerInputSource(Instance& instance);
void activateInputSource(Instance& instance);
void deactivateInputSource(Instance& instance);

}  // namespace quorvane
