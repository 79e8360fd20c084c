#pragma once
// Our entry in one of the desktop's lists of input sources. What others have there stays.

#include <string>

#include "tools/setup/Record.h"

namespace quorvane::setup {

struct InputSource {
  const char* name;  ///< what reports and the record call the list
  const char* schema;
  const char* key;
  std::string ours;   ///< as SettingsList tells entries
  std::string plain;  ///< goes before ours into an empty list, so that one can type without us;
                      ///< may be empty
  bool isGnome = false;
};

/// The lists of IBus and of GNOME. `components` is IBus's folder, where the names of its plain
/// keyboards stand.
std::vector<InputSource> inputSources(const std::filesystem::path& components);

// Where the desktop has no such list, nothing is done and nothing told.
void addInputSource(const InputSource& source, Record& record, Report& report);
void removeInputSource(const InputSource& source, Record& record, Report& report);

}  // namespace quorvane::setup
