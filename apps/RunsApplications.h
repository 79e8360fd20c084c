#pragma once
// The application folder of a `type` or `desk`.

#include <filesystem>

#include "apps/SystemOptions.h"
#include "hosts/desktop/DesktopConfiguration.h"

namespace quorvane {

/// Gives a run the applications that its options ask for. Where they differ from the user's it gets
/// an application folder of its own below `folder`, with the stand-in that runs so or without any,
/// and nothing in its preferences leads elsewhere. What it launches ends with it.
void chooseApplications(desktop::DesktopConfiguration& configuration, const SystemOptions& options,
                        const std::filesystem::path& folder);

/// Sees to it that there is an application folder: where neither the user nor the bundle has one,
/// it makes the user's, with the stand-in, and says so on standard error. Throws
/// std::runtime_error, which says what to do.
void prepareUsersApplications(desktop::DesktopConfiguration& configuration);

}  // namespace quorvane
