#include "tools/checker/WritingStyles.h"

#include <algorithm>
#include <string>

#include "hosts/desktop/KeyFile.h"

namespace quorvane::checker {

namespace {

const std::string kWritingGroup = "Writing";
const std::string kStyleKey = "style";

}  // namespace

CorrectionSwitches inStyle(const WritingStyle& style, const CorrectionSwitches& users) {
  CorrectionSwitches both;
  for (const CorrectionSwitch& one : kCorrectionSwitches) {
    both.*one.on = users.*one.on && style.corrects.*one.on;
  }
  return both;
}

std::size_t readWritingStyle(const std::filesystem::path& configDirectory, quorvane::LogSink& log) {
  const desktop::KeyFile file(configDirectory / kCorrectionsFile, log);
  const std::string name = file.text(kWritingGroup, kStyleKey);
  const auto* const found = std::ranges::find(kWritingStyles, name, &WritingStyle::name);
  return found == kWritingStyles.end() ? 0
                                       : static_cast<std::size_t>(found - kWritingStyles.begin());
}

bool keepWritingStyle(const std::filesystem::path& configDirectory, quorvane::LogSink& log,
                      std::size_t style) {
  desktop::KeyFile file(configDirectory / kCorrectionsFile, log);
  file.setText(kWritingGroup, kStyleKey, std::string(kWritingStyles.at(style).name));
  return file.save();
}

}  // namespace quorvane::checker
