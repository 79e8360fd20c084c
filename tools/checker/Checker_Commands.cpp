// What the Input Menu asks of the stand-in besides windows.

#include <algorithm>
#include <array>

#include "src/base/HostWords.h"
#include "src/base/Log.h"
#include "tools/checker/Checker.h"
#include "tools/checker/Dates.h"
#include "tools/checker/TextToolCommand.h"

namespace quorvane::checker {

void Checker::offerStyles(const std::filesystem::path& configDirectory) {
  const auto inForce = [this](const WritingStyle& style) {
    Log(instance_, "* checker: writing style ", style.name);
    if (corrections_) corrections_->use(inStyle(style, correctionSwitches_));
  };
  styles_.emplace(ToolRecord(segments_.tool), menuBytes_, configDirectory, host_.log(), inForce);
}

void Checker::insertDate(std::uint32_t command) {
  Platform& platform = instance_.platform();
  conversation_->insert(
      dateText(command, platform.dateFormatting, platform.clock.CFAbsoluteTimeGetCurrent()));
}

void Checker::runTool(std::uint32_t command) {
  constexpr std::size_t kFrontProcessOffset = 16;
  const auto client = static_cast<std::int32_t>(hostWord32(segments_.command, kFrontProcessOffset));
  ToolRecord(segments_.tool).put(At::PasteClient, clientOfCommand());
  const ToolEnd end = runTextTool(command, client, *clipboardLoan_,
                                  instance_.platform().textEncoding, *inputMethod_);
  Log(instance_, "* checker: text tool ", command, ": ", textOf(end));
}

void Checker::perform(std::uint32_t command) {
  if (performInWindow(command)) return;
  using Act = void (*)(Checker & checker, std::uint32_t command);
  struct Row {
    std::uint32_t first;
    std::uint32_t last;
    Act act;
  };
  static constexpr std::array kCommands{
      Row{8, 8, [](Checker& checker, auto) { checker.styles_->show(); }},
      Row{16383, 16383, [](Checker& checker, auto) { checker.users_->read(); }},
      Row{16384, 16384, [](Checker& checker, auto) { checker.styles_->choose(); }},
      Row{16385, 16385,
          [](Checker& checker, auto) {
            checker.users_->turnOver(ToolRecord(checker.segments_.tool).get(At::AutoTypeChoice));
          }},
      Row{17100, 17102, [](Checker& checker, auto tool) { checker.runTool(tool); }},
      Row{17110, 17111, [](Checker& checker, auto tool) { checker.runTool(tool); }},
      Row{17140, 17149, [](Checker& checker, auto date) { checker.insertDate(date); }},
      Row{65534, 65534, [](Checker& checker, auto) { checker.host_.runLoop().quit(); }},
  };
  const auto* const row = std::ranges::find_if(
      kCommands, [command](const Row& it) { return command >= it.first && command <= it.last; });
  if (row != kCommands.end()) row->act(*this, command);
}

}  // namespace quorvane::checker
