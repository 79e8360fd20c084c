#pragma once
// A link in the user's configuration to a file that was installed.

#include <filesystem>

#include "tools/setup/Record.h"

namespace quorvane::setup {

struct Link {
  const char* name;  ///< what reports and the record call it
  std::filesystem::path path;
  std::filesystem::path target;
};

/// Whatever else lies there stays, and is told.
void makeLink(const Link& link, Record& record, Report& report);
/// The one that the record tells of under this name, with the folders that were made for it where
/// nothing else lies in them.
void removeLink(const char* name, Record& record, Report& report);

}  // namespace quorvane::setup
