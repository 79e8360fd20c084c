#include "apps/FamilyEnd.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <set>
#include <string_view>

#include "apps/FamilyFolders.h"
#include "apps/OwnSurroundings.h"
#include "apps/Segments.h"
#include "hosts/desktop/Announcement.h"
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
using Pids = std::set<std::int32_t>;

constexpr std::chrono::milliseconds kPatience{2000};
constexpr std::string_view kPortPrefix = "Q7T2M4K9W1.";
constexpr std::string_view kStartsPrefix = ".starts-";
constexpr std::array<std::string_view, 2> kSharedFiles{"popup", "window"};
/// What ends may have started others; more rounds are of no use.
constexpr int kMostRounds = 3;

void addStarts(Pids& pids, const path& record) {
  for (const desktop::LaunchStart& start : desktop::parseLaunchStarts(contentOf(record))) {
    if (desktop::beginningOf(start.pid) == start.began) pids.insert(start.pid);
  }
}

void addServer(Pids& pids, const path& port) {
  const Descriptor socket = desktop::connectTo(port);
  ucred peer{};
  socklen_t size = sizeof peer;
  if (!socket.valid()) return;
  if (getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0) pids.insert(peer.pid);
}

/// Whoever `entry` tells of.
void addProcesses(Pids& pids, const path& entry) {
  const std::string name = entry.filename();
  if (const auto process = announcedProcess(entry)) pids.insert(process->pid);
  const auto run = pidOfRun(name);
  if (run && beganBefore(*run, entry)) pids.insert(*run);
  if (name.starts_with(kStartsPrefix)) addStarts(pids, entry);
  if (name.starts_with(kPortPrefix)) addServer(pids, entry);
}

std::vector<Descriptor> runningIn(const path& runtimeFolder) {
  Pids pids;
  for (const path& folder : foldersOf(runtimeFolder)) {
    for (const path& entry : entriesOf(folder)) addProcesses(pids, entry);
  }
  pids.erase(getpid());
  std::vector<Descriptor> processes;
  for (const std::int32_t pid : pids) {
    Descriptor process = desktop::openProcess(pid);
    if (process.valid()) processes.push_back(std::move(process));
  }
  return processes;
}

bool isFamilys(const path& entry) {
  const std::string name = entry.filename();
  return name.starts_with('.') || name.starts_with(kPortPrefix) || name.starts_with("data-") ||
         name.starts_with("applications-") || desktop::pidOfAnnouncementFile(name) ||
         desktop::pidOfStatusFile(name) || name.starts_with("clipboard") || pidOfRun(name) ||
         std::ranges::find(kSharedFiles, name) != kSharedFiles.end();
}

void removeFolder(const path& folder, FamilyEnd& end) {
  for (const path& entry : entriesOf(folder)) {
    std::error_code error;
    if (isFamilys(entry)) std::filesystem::remove_all(entry, error);
    if (error) end.remains.push_back(entry.string() + ": " + error.message());
  }
  if (rmdir(folder.c_str()) == 0) return;
  end.remains.push_back(folder.string() + ": " + std::strerror(errno));
}

void endProcessesOf(const path& runtimeFolder, FamilyEnd& end) {
  for (int round = 0; round < kMostRounds; ++round) {
    const auto processes = runningIn(runtimeFolder);
    if (processes.empty()) return;
    end.processes += processes.size();
    if (!desktop::endProcesses(processes, kPatience)) {
      end.remains.emplace_back("a process that can't be ended");
      return;
    }
  }
}

}  // namespace

FamilyEnd endFamily(const path& runtimeFolder, std::uint32_t keyOffset) {
  FamilyEnd end;
  std::error_code error;
  if (std::filesystem::exists(std::filesystem::symlink_status(runtimeFolder, error))) {
    const desktop::RuntimeFolder folder(runtimeFolder);
    endProcessesOf(runtimeFolder, end);
    const Descriptor lock = folder.lock();
    for (const path& run : foldersOf(runtimeFolder)) {
      if (const auto pid = pidOfRun(run.filename().native())) removeSegments(keyOffsetOf(*pid));
    }
    removeFolder(runtimeFolder, end);
  }
  for (const std::uint32_t key : removeSegments(keyOffset, InUse::Keep)) {
    end.remains.push_back("shared segment " + std::to_string(key) + ", which somebody uses");
  }
  return end;
}

}  // namespace quorvane
