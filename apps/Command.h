#pragma once
// The commands of `quorvane`. Each adds itself with its options to the command line; the one that
// was chosen leaves what is to be run.

#include <functional>

namespace CLI {
class App;
}

namespace quorvane {

inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;    ///< an expectation failed, or the work couldn't be done
inline constexpr int kExitBadUsage = 2;  ///< bad usage or bad input

/// Returns the exit code.
using Run = std::function<int()>;

void addDeskCommand(CLI::App& app, Run& run);
void addTypeCommand(CLI::App& app, Run& run);
void addCandidatesCommand(CLI::App& app, Run& run);
void addCheckerCommand(CLI::App& app, Run& run);
void addCorrectionsCommand(CLI::App& app, Run& run);
void addCompanionCommand(CLI::App& app, Run& run);
void addStatusCommand(CLI::App& app, Run& run);
void addStopCommand(CLI::App& app, Run& run);
void addSetupCommand(CLI::App& app, Run& run);
void addDoctorCommand(CLI::App& app, Run& run);
void addInstallOption(CLI::App& app, Run& run);
void addServerCommand(CLI::App& app, Run& run);
/// `app` is the program, with all its commands once it is run.
void addManualCommand(CLI::App& app, Run& run);
void addReplayCommand(CLI::App& app, Run& run);
void addSettingsCommand(CLI::App& app, Run& run);

}  // namespace quorvane
