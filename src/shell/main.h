#pragma once
// The order of the whole process.

#include <string>
#include <vector>

#include "src/base/Instance.h"

namespace quorvane {

/// The whole life of the input method, `arguments` without the program's name. The exit status: 0,
/// or -1 where no candidate panel could be made. Throws std::runtime_error without a word list.
int InputMethodMain(Instance& instance, const std::vector<std::string>& arguments);

/// Null: no panel.
IMKCandidates* init_inputmenu_server(Instance& instance);
/// Rewrites the user defaults: an edit of them doesn't survive a start.
void initPreference(Instance& instance);

// The input source: register, choose, and let go.
void registerInputSource(Instance& instance);
void activateInputSource(Instance& instance);
void deactivateInputSource(Instance& instance);

}  // namespace quorvane
