#include "tools/setup/Link.h"

#include "hosts/desktop/PrivateFolders.h"

namespace quorvane::setup {
namespace {

using std::filesystem::path;

// The record's keys.
constexpr const char* kPath = "Path";
constexpr const char* kTarget = "Target";
constexpr const char* kBelow = "Below";  ///< the folders below this one were made

bool isThere(const path& entry) {
  std::error_code error;
  return std::filesystem::symlink_status(entry, error).type() !=
         std::filesystem::file_type::not_found;
}

bool leadsTo(const path& link, const path& target) {
  std::error_code error;
  return std::filesystem::read_symlink(link, error) == target && !error;
}

path nearestFolder(path folder) {
  while (!isThere(folder) && folder.has_relative_path()) folder = folder.parent_path();
  return folder;
}

void removeEmptyFolders(path folder, const path& below) {
  std::error_code error;
  while (folder != below && folder.has_relative_path()) {
    if (!std::filesystem::remove(folder, error) || error) return;
    folder = folder.parent_path();
  }
}

}  // namespace

void makeLink(const Link& link, Record& record, Report& report) {
  if (leadsTo(link.path, link.target)) return;
  if (isThere(link.path)) {
    report.problems.push_back(link.path.string() + " is another's: left as it is");
    return;
  }
  const path folder = link.path.parent_path();
  if (!record.keep(link.name,
                   {{kPath, link.path}, {kTarget, link.target}, {kBelow, nearestFolder(folder)}})) {
    return;
  }
  try {
    desktop::makePrivateFolders(folder);
    std::filesystem::create_symlink(link.target, link.path);
    report.changes.push_back(std::string(link.name) + ": " + link.path.string() + " leads to " +
                             link.target.string());
  } catch (const std::exception& error) {
    report.problems.push_back(std::string(link.name) + ": " + error.what());
  }
}

void removeLink(const char* name, Record& record, Report& report) {
  if (!record.has(name)) return;
  const path made = record.text(name, kPath);
  std::error_code error;
  if (leadsTo(made, record.text(name, kTarget))) {
    if (!std::filesystem::remove(made, error)) {
      report.problems.push_back(made.string() + ": " + error.message());
      return;
    }
    report.changes.push_back(std::string(name) + ": removed " + made.string());
  }
  removeEmptyFolders(made.parent_path(), record.text(name, kBelow));
  record.forget(name);
}

}  // namespace quorvane::setup
