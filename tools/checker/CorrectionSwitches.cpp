#include "tools/checker/CorrectionSwitches.h"

#include <string>

#include "hosts/desktop/KeyFile.h"

namespace quorvane::checker {

namespace {

const std::string kGroup = "Corrections";

desktop::KeyFile fileIn(const std::filesystem::path& folder, quorvane::LogSink& log) {
  return {folder / kCorrectionsFile, log};
}

}  // namespace

CorrectionSwitches readCorrectionSwitches(const std::filesystem::path& configDirectory,
                                          quorvane::LogSink& log) {
  const desktop::KeyFile file = fileIn(configDirectory, log);
  CorrectionSwitches switches;
  for (const CorrectionSwitch& one : kCorrectionSwitches) {
    const std::string name(one.name);
    if (file.has(kGroup, name)) switches.*one.on = file.boolean(kGroup, name);
  }
  return switches;
}

bool setCorrectionSwitch(const std::filesystem::path& configDirectory, quorvane::LogSink& log,
                         std::string_view name, bool on) {
  desktop::KeyFile file = fileIn(configDirectory, log);
  file.setBoolean(kGroup, std::string(name), on);
  return file.save();
}

}  // namespace quorvane::checker
