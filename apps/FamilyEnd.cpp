#include "apps/FamilyEnd.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <map>
#include <optional>
#include <string_view>

#include "apps/FamilyFolders.h"
#include "apps/OwnSurroundings.h"
#include "apps/Segments.h"
#include "hosts/desktop/Announcement.h"
#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/LaunchRecord.h"
#include "hosts/desktop/PacketSocket.h"
#include "hosts/desktop/PlainFile.h"
#include "hosts/desktop/ProcessLiveness.h"
#include "hosts/desktop/RuntimeFolder.h"
#include "hosts/desktop/StatusFile.h"

namespace quorvane {
namespace {

using desktop::Descriptor;
using std::filesystem::path;
using Processes = std::map<std::int32_t, Descriptor>;

constexpr std::chrono::milliseconds kPatience{2000};
constexpr std::string_view kPortPrefix = "Q7T2M4K9W1.";
constexpr std::string_view kStartsPrefix = ".starts-";
constexpr std::array<std::string_view, 6> kSharedFiles{
    "popup", "window", "clipboard", "clipboard.before", "clipboard.lent", "clipboard.kept"};
/// What ends may have started others; more rounds are of no use.
constexpr int kMostRounds = 3;

/// The descriptor comes before the look at whether it is the one meant: it stays that process's.
template <class IsMeant>
void addProcess(Processes& processes, std::int32_t pid, IsMeant isMeant) {
  if (pid == getpid()) return;
  Descriptor process = desktop::openProcess(pid);
  if (process.valid() && isMeant()) processes.emplace(pid, std::move(process));
}

void addWriter(Processes& processes, std::int32_t pid, const path& file) {
  addProcess(processes, pid, [&] { return desktop::beganBefore(pid, file); });
}

void addStarts(Processes& processes, const path& record) {
  for (const desktop::LaunchStart& start : desktop::parseLaunchStarts(contentOf(record))) {
    addProcess(processes, start.pid,
               [&start] { return desktop::beginningOf(start.pid) == start.began; });
  }
}

void addServer(Processes& processes, const path& port) {
  const Descriptor socket = desktop::connectTo(port);
  ucred peer{};
  socklen_t size = sizeof peer;
  if (!socket.valid()) return;
  if (getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) return;
  addWriter(processes, peer.pid, port);
}

/// Whoever `entry` tells of.
void addProcesses(Processes& processes, const path& entry) {
  const std::string name = entry.filename();
  const auto announced = desktop::pidOfAnnouncementFile(name);
  const auto process = announced ? desktop::parseAnnouncement(contentOf(entry)) : std::nullopt;
  if (process && process->pid == *announced) addWriter(processes, *announced, entry);
  if (const auto run = pidOfRun(name)) addWriter(processes, *run, entry);
  if (name.starts_with(kStartsPrefix)) addStarts(processes, entry);
  if (name.starts_with(kPortPrefix)) addServer(processes, entry);
}

std::vector<Descriptor> runningIn(const path& runtimeFolder) {
  Processes found;
  for (const path& folder : foldersOf(runtimeFolder)) {
    for (const path& entry : entriesOf(folder)) {
      if (isOwn(entry)) addProcesses(found, entry);
    }
  }
  std::vector<Descriptor> processes;
  for (auto& [pid, process] : found) processes.push_back(std::move(process));
  return processes;
}

bool isFamilysFolder(std::string_view name) {
  return std::ranges::any_of(kRunKinds,
                             [name](auto kind) { return pidOfRun(name, kind).has_value(); });
}

bool isFamilysFile(std::string_view name) {
  if (const auto part = desktop::temporaryOf(name)) return isFamilysFile(part->target);
  return name == ".lock" || name.starts_with(kStartsPrefix) || name.starts_with(kPortPrefix) ||
         desktop::pidOfAnnouncementFile(name) ||
         std::ranges::find(kSharedFiles, name) != kSharedFiles.end();
}

/// What isn't the family's stays, and so does its folder.
std::error_code removeFamilys(const path& entry) {
  const std::string name = entry.filename();
  struct stat status {};
  if (lstat(entry.c_str(), &status) != 0) return {};
  std::error_code error;
  if (S_ISDIR(status.st_mode) && isFamilysFolder(name)) std::filesystem::remove_all(entry, error);
  if (!S_ISDIR(status.st_mode) && isFamilysFile(name)) std::filesystem::remove(entry, error);
  return error;
}

void removeFolder(const path& folder, FamilyEnd& end) {
  for (const path& entry : entriesOf(folder)) {
    const std::error_code error = removeFamilys(entry);
    if (error) end.remains.push_back(entry.string() + ": " + error.message());
  }
  if (rmdir(folder.c_str()) == 0) return;
  end.remains.push_back(folder.string() + ": " + std::strerror(errno));
}

/// False, told, where somebody goes on.
bool endProcessesOf(const path& runtimeFolder, FamilyEnd& end) {
  for (int round = 0; round < kMostRounds; ++round) {
    const auto processes = runningIn(runtimeFolder);
    if (processes.empty()) return true;
    if (!desktop::endProcesses(processes, kPatience)) {
      end.remains.emplace_back("a process that can't be ended; nothing was removed");
      return false;
    }
    end.processes += processes.size();
  }
  if (runningIn(runtimeFolder).empty()) return true;
  end.remains.emplace_back("processes that start again and again; nothing was removed");
  return false;
}

void removeUnused(std::uint32_t keyOffset, FamilyEnd& end) {
  for (const std::uint32_t key : removeSegments(keyOffset, InUse::Keep)) {
    end.remains.push_back("shared segment " + std::to_string(key) + " at offset " +
                          std::to_string(keyOffset) + ", which somebody uses");
  }
}

}  // namespace

FamilyEnd endFamily(const path& runtimeFolder, std::uint32_t keyOffset) {
  FamilyEnd end;
  std::error_code error;
  if (std::filesystem::exists(std::filesystem::symlink_status(runtimeFolder, error))) {
    const desktop::RuntimeFolder folder(runtimeFolder);
    if (!endProcessesOf(runtimeFolder, end)) return end;
    const Descriptor lock = folder.lock();
    for (const path& run : foldersOf(runtimeFolder)) {
      if (const auto pid = pidOfRun(run.filename().native())) removeUnused(keyOffsetOf(*pid), end);
    }
    removeFolder(runtimeFolder, end);
  }
  removeUnused(keyOffset, end);
  return end;
}

}  // namespace quorvane
