#pragma once
// The applications of the family that run, kept current by the announcements in the runtime folder
// and by a pidfd for each process. Reading it makes no system call.

#include <filesystem>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/desktop/Announcement.h"
#include "hosts/desktop/RunLoop.h"
#include "hosts/desktop/RuntimeFolder.h"
#include "platform/Workspace.h"

namespace quorvane::desktop {

class ProcessRegistry {
 public:
  /// `ownProcess` stands in the list from the start, first of all.
  ProcessRegistry(const RuntimeFolder& folder, RunLoop& runLoop, quorvane::LogSink& log,
                  const Announcement& ownProcess);
  ~ProcessRegistry();
  ProcessRegistry(const ProcessRegistry&) = delete;
  ProcessRegistry& operator=(const ProcessRegistry&) = delete;

  /// Tells the others that this process runs. To be done last, when segments and ports stand. The
  /// file goes with the result. Throws std::runtime_error where it can't be written.
  [[nodiscard]] std::unique_ptr<Registration> announce(const Announcement& announcement);
  /// Takes this process's announcement back, whoever still keeps the owner of it.
  void withdraw();
  /// Has a process in the list that doesn't announce itself. One above the system's numbers stays
  /// to the end; of any other false where it doesn't run.
  bool note(const AnnouncedProcess& process);
  /// Takes in what has changed in the folder since the run loop last turned.
  void refresh();

  /// Puts a process of the list in front; 0 puts none there. False where the list hasn't got it.
  /// Observers hear of it when the run loop turns.
  bool setFrontApplication(std::int32_t pid);
  /// 0: none.
  [[nodiscard]] std::int32_t frontApplication() const { return frontPid_; }

  /// Two views of one list, in the same order.
  [[nodiscard]] std::span<const AnnouncedProcess> processes() const { return processes_; }
  [[nodiscard]] std::span<const NSRunningApplication> runningApplications() const {
    return applications_;
  }
  /// Null where the list hasn't got it.
  [[nodiscard]] const AnnouncedProcess* find(std::int32_t pid) const;
  /// The first one that isn't this process; null likewise.
  [[nodiscard]] const AnnouncedProcess* findSignature(FourCharCode signature) const;
  /// Signatures of those of the list that have crashed or were killed; tells of each once.
  std::vector<FourCharCode> takeCrashed() { return std::exchange(crashed_, {}); }
  /// False where the list hasn't got it or it has ended.
  bool signal(std::int32_t pid, int number) const;
  [[nodiscard]] std::int32_t ownPid() const { return processes_.front().pid; }
  /// The file of a process, whether or not it is there.
  [[nodiscard]] std::filesystem::path announcementOf(std::int32_t pid) const {
    return folder_ / announcementFileName(pid);
  }

  [[nodiscard]] std::unique_ptr<Registration> addObserver(WorkspaceNotification name,
                                                          Workspace::Observer observer);

 private:
  struct Liveness {
    Descriptor descriptor;  ///< pidfd
    std::unique_ptr<Registration> watch;
  };
  struct ObserverEntry;
  class AnnouncementOwner;
  class ObserverOwner;

  void watchFolder();
  void scanFolder();
  void announcementAppeared(std::string_view fileName);
  [[nodiscard]] std::optional<AnnouncedProcess> readAnnouncement(
      const std::filesystem::path& file) const;
  void announcementWent(std::string_view fileName, bool moved);
  void add(AnnouncedProcess process, Descriptor pidDescriptor);
  void remove(std::int32_t pid, bool crashed);
  void processDied(std::int32_t pid);
  [[nodiscard]] std::size_t indexOf(std::int32_t pid) const;
  void notify(WorkspaceNotification name, const NSRunningApplication& application);

  const RuntimeFolder& folder_;
  RunLoop& runLoop_;
  quorvane::LogSink& log_;
  std::vector<AnnouncedProcess> processes_;
  std::vector<NSRunningApplication> applications_;
  std::vector<Liveness> liveness_;
  std::vector<std::shared_ptr<ObserverEntry>> observers_;
  std::int32_t frontPid_ = 0;
  bool announced_ = false;
  std::vector<FourCharCode> crashed_;
  bool observing_ = false;  ///< the first scan notifies nobody
  Descriptor folderEvents_;
  std::unique_ptr<Registration> folderWatch_;
  std::vector<NSRunningApplication> activated_;  ///< observers haven't heard of them yet
  std::unique_ptr<Registration> activation_;
  std::shared_ptr<ProcessRegistry*> self_;  ///< what owners that outlive this object look at
};

}  // namespace quorvane::desktop
