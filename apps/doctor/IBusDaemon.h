#pragma once
// IBus's daemon of this user, as the files of its address and its own answers show it.

#include <filesystem>

#include "tools/doctor/Facts.h"

namespace quorvane {

/// Takes at most a few seconds. `configuration` is the user's, of all programs.
doctor::Daemon ibusDaemon(const std::filesystem::path& configuration);

}  // namespace quorvane
