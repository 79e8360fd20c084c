#include "apps/FamilyFolders.h"

#include <sys/stat.h>
#include <unistd.h>

#include "apps/OwnSurroundings.h"
#include "hosts/desktop/PlainFile.h"
#include "hosts/desktop/ProcessLiveness.h"

namespace quorvane {

using std::filesystem::path;

std::vector<path> entriesOf(const path& folder) {
  std::vector<path> entries;
  std::error_code error;
  for (std::filesystem::directory_iterator each(folder, error), end; !error && each != end;
       each.increment(error)) {
    entries.push_back(each->path());
  }
  return entries;
}

bool isOwn(const path& entry) {
  struct stat status {};
  return lstat(entry.c_str(), &status) != 0 || status.st_uid == geteuid();
}

std::vector<path> foldersOf(const path& runtimeFolder) {
  std::vector<path> folders{runtimeFolder};
  for (const path& entry : entriesOf(runtimeFolder)) {
    struct stat status {};
    const bool isFolder = lstat(entry.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    if (isFolder && isOwn(entry) && pidOfRun(entry.filename().native())) folders.push_back(entry);
  }
  return folders;
}

std::string contentOf(const path& file) {
  constexpr std::size_t kLargest = 1024;
  const auto bytes = desktop::readPlainFile(file, kLargest, desktop::Whose::Own);
  return bytes ? std::string(bytes->begin(), bytes->end()) : std::string();
}

std::optional<desktop::AnnouncedProcess> announcedProcess(const path& entry) {
  const auto pid = desktop::pidOfAnnouncementFile(entry.filename().native());
  const auto process = pid ? desktop::parseAnnouncement(contentOf(entry)) : std::nullopt;
  const bool isRunning = process && process->pid == *pid && desktop::beganBefore(*pid, entry) &&
                         desktop::isRunning(*pid);
  return isRunning ? process : std::nullopt;
}

}  // namespace quorvane
