// What the Input Menu asks of the stand-in besides windows.

#include <algorithm>
#include <array>

#include "src/base/Log.h"
#include "tools/checker/Checker.h"

namespace quorvane::checker {

void Checker::offerStyles(const std::filesystem::path& configDirectory) {
  const auto inForce = [this](const WritingStyle& style) {
    Log(instance_, "* checker: writing style ", style.name);
    if (corrections_) corrections_->use(inStyle(style, correctionSwitches_));
  };
  styles_.emplace(ToolRecord(segments_.tool), menuBytes_, configDirectory, host_.log(), inForce);
}

void Checker::perform(std::uint32_t command) {
  struct Row {
    std::uint32_t command;
    void (*act)(Checker& checker);
  };
  static constexpr std::array kCommands{
      Row{8, [](Checker& checker) { checker.styles_->show(); }},
      Row{16384, [](Checker& checker) { checker.styles_->choose(); }},
      Row{65534, [](Checker& checker) { checker.host_.runLoop().quit(); }},
  };
  const auto* const row = std::ranges::find(kCommands, command, &Row::command);
  if (row != kCommands.end()) row->act(*this);
}

}  // namespace quorvane::checker
