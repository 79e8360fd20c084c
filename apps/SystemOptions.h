#pragma once
// What `type` and `desk` let a person choose about the system that they run.

#include <cstdint>
#include <optional>

#include "apps/StandIn.h"
#include "tools/checker/CheckerOptions.h"
#include "tools/parameters/ParameterFile.h"

namespace CLI {
class App;
}

namespace quorvane {

struct SystemOptions {
  std::uint32_t switches = 0;  ///< CURRENTAPPFLAGSTATUS
  parameters::CompletionFlags completion{};
  bool checker = true;  ///< the stand-in runs beside us
  StandIn::Talk talk = StandIn::Talk::None;
  checker::CheckerOptions standIn{};   ///< what `StandIn` takes of them
  std::optional<int> logDescriptor{};  ///< of log and console; none: they go nowhere
  bool showPrivate = false;            ///< typed text in log lines
};

/// The options of a command that fill `options`, which outlives the parsing. `options.switches` is
/// the default.
void addSystemOptions(CLI::App& command, SystemOptions& options);

}  // namespace quorvane
