#pragma once
// What `type` and `desk` let a person choose about the system that they run.

#include <cstdint>
#include <optional>

#include "tools/checker/CheckerOptions.h"
#include "tools/parameters/UsualParameters.h"

namespace CLI {
class App;
}

namespace quorvane {

enum class StandInTalk { None, Log, LogWithText };  ///< to our standard error

struct SystemOptions {
  bool resident = false;                     ///< the user's one, for text fields of other processes
  parameters::OwnApplication application;    ///< whose text field it is
  std::optional<std::uint32_t> switches{};   ///< of this run; none: what the user's file says
  bool completes = true;                     ///< false: no words in this run, whatever that says
  parameters::CompletionFlags completion{};  ///< on in this run, beside those that the user has on
  bool checker = true;                       ///< the stand-in runs beside us
  StandInTalk talk = StandInTalk::None;
  checker::CheckerOptions standIn{};   ///< smart characters and windows count
  std::optional<int> logDescriptor{};  ///< of log and console; none: they go nowhere
  bool showPrivate = false;            ///< typed text in log lines

  /// It has a parameter file of its own, and what is switched in it isn't kept.
  [[nodiscard]] bool ownParameters() const {
    return switches || !completes || completion != parameters::CompletionFlags();
  }
};

/// The options of a command that fill `options`, which outlives the parsing.
void addSystemOptions(CLI::App& command, SystemOptions& options);

}  // namespace quorvane
