#pragma once
// Running applications, as the Process Manager and the workspace show them.

#include <deque>
#include <list>
#include <optional>
#include <string>
#include <vector>

#include "hosts/journal/Journal.h"
#include "platform/ProcessManager.h"
#include "platform/Workspace.h"

namespace quorvane::memory {

struct MemoryProcess {
  ProcessSerialNumber psn;
  std::int32_t pid = 0;
  std::string name;
  FourCharCode signature = "????"_4cc;
  FourCharCode type = "APPL"_4cc;
  std::uint32_t mode = 0;
  std::string bundleIdentifier;
  bool informationFails = false;  ///< GetProcessInformation fails for it
};

/// Whether the workspace gets to know of a change. Queued: at the next turn of the run loop the
/// list of running applications changes and the observers are called. Missed: the list changes at
/// once and no notification comes. The Process Manager sees every change at once.
enum class Notice { Queued, Missed };

/// The list starts with the input method itself (serial number {0, 8192}, pid 4242) and an editor
/// in front (serial number {1, 8193}, pid 4243, signature "WRTR", "com.example.writer").
class MemoryProcesses : public ProcessManager, public Workspace {
 public:
  explicit MemoryProcesses(Journal& journal);

  OSStatus GetCurrentProcess(ProcessSerialNumber& psn) override;
  OSStatus GetFrontProcess(ProcessSerialNumber& psn) override;
  OSStatus GetNextProcess(ProcessSerialNumber& psn) override;
  OSStatus GetProcessInformation(const ProcessSerialNumber& psn, ProcessInfoRec& info) override;
  OSStatus GetProcessForPID(std::int32_t pid, ProcessSerialNumber& psn) override;
  OSStatus GetProcessPID(const ProcessSerialNumber& psn, std::int32_t& pid) override;
  OSStatus WakeUpProcess(const ProcessSerialNumber& psn) override;
  OSStatus SetFrontProcess(const ProcessSerialNumber& psn) override;

  /// Spans and pointers stay valid until the run loop turns, whatever the script does meanwhile.
  std::span<const NSRunningApplication> runningApplications() override;
  const NSRunningApplication* frontmostApplication() override;
  const NSRunningApplication* menuBarOwningApplication() override;
  bool openURLs(const std::string& address, std::string_view bundleIdentifier,
                std::uint32_t options) override;
  bool openURL(const std::string& /*address*/) override { return false; }
  bool launchApplication(const std::string& /*path*/) override { return false; }
  [[nodiscard]] std::unique_ptr<Registration> addObserver(WorkspaceNotification name,
                                                          Observer observer) override;

  // The script's side.
  /// A serial number or pid of 0 is filled in, with high word 1. Returns the serial number.
  ProcessSerialNumber add(MemoryProcess process, Notice notice = Notice::Queued);
  /// Nothing is in front afterwards if it was.
  void remove(const ProcessSerialNumber& psn, Notice notice = Notice::Queued);
  /// {0, 0}: nothing is in front.
  void setFront(const ProcessSerialNumber& psn, Notice notice = Notice::Queued);
  /// For changing it in place; null where there is none. The workspace shows the change with the
  /// next one of its own.
  MemoryProcess* find(const ProcessSerialNumber& psn);
  MemoryProcess* findSignature(FourCharCode signature);
  [[nodiscard]] ProcessSerialNumber front() const { return front_; }
  [[nodiscard]] static ProcessSerialNumber self() { return {0, 8192}; }
  [[nodiscard]] static ProcessSerialNumber editor() { return {1, 8193}; }
  /// A notification as the script has it, delivered at the next turn; `application` may be empty.
  void post(WorkspaceNotification name, const ProcessSerialNumber& psn,
            std::optional<NSRunningApplication> application);
  /// A turn of the run loop: delivers what is queued.
  void deliverNotifications();
  [[nodiscard]] bool notificationsWait() const { return !queued_.empty(); }

  bool getCurrentProcessFails = false;
  bool getFrontProcessFails = false;
  bool wakeUpProcessFails = false;

 private:
  struct Queued {
    WorkspaceNotification name;
    ProcessSerialNumber psn;
    std::optional<NSRunningApplication> application;
  };
  struct Observed {
    WorkspaceNotification name;
    Observer observer;
    bool active = true;
  };
  using Observers = std::vector<std::shared_ptr<Observed>>;
  class ObserverRegistration;
  void changed(Notice notice, WorkspaceNotification name, const MemoryProcess* process);
  void refreshApplications();
  void deliver(const Queued& queued);
  [[nodiscard]] const NSRunningApplication* activeApplication() const;
  /// {0, 2} is the input method itself. Null where there is none.
  [[nodiscard]] const MemoryProcess* lookUp(const ProcessSerialNumber& psn) const;
  [[nodiscard]] NSRunningApplication describe(const MemoryProcess& process) const;

  Journal& journal_;
  std::vector<MemoryProcess> processes_;
  ProcessSerialNumber front_;
  std::uint32_t nextSerial_ = 8194;
  /// The list as the workspace shows it, last; before it what may still be looked at.
  std::list<std::vector<NSRunningApplication>> applications_;
  std::deque<Queued> queued_;
  /// Shared with the registrations, which may outlive this object.
  std::shared_ptr<Observers> observers_ = std::make_shared<Observers>();
};

}  // namespace quorvane::memory
