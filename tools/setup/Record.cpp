#include "tools/setup/Record.h"

#include <algorithm>

namespace quorvane::setup {

Record::Record(std::filesystem::path file, Report& report)
    : path_(std::move(file)), problems_(report), file_(path_, problems_) {}

bool Record::has(const std::string& change) const {
  return std::ranges::count(file_.groups(), change) != 0;
}

std::string Record::text(const std::string& change, const std::string& key) const {
  return file_.text(change, key);
}

bool Record::keep(const std::string& change, const std::map<std::string, std::string>& values) {
  for (const auto& [key, value] : values) file_.setText(change, key, value);
  return file_.save();
}

void Record::forget(const std::string& change) {
  file_.removeGroup(change);
  std::error_code ignored;
  if (file_.groups().empty()) {
    std::filesystem::remove(path_, ignored);
    std::filesystem::remove(path_.parent_path(), ignored);
  } else {
    file_.save();
  }
}

}  // namespace quorvane::setup
