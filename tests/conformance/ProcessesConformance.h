#pragma once
// What every host's ProcessManager and Workspace must say about the same processes.

#include <algorithm>
#include <array>
#include <vector>

#include "tests/conformance/HostStage.h"

namespace quorvane::conformance {

class ProcessesConformance : public HostConformance {
 protected:
  ProcessSerialNumber psnOf(std::int32_t pid) {
    ProcessSerialNumber psn;
    EXPECT_EQ(manager_.GetProcessForPID(pid, psn), noErr);
    return psn;
  }
  std::vector<ProcessSerialNumber> walk() {
    std::vector<ProcessSerialNumber> all;
    ProcessSerialNumber psn;
    while (manager_.GetNextProcess(psn) == noErr && all.size() < 100) all.push_back(psn);
    EXPECT_EQ(psn, ProcessSerialNumber{});
    return all;
  }
  bool isListed(std::int32_t pid) {
    return std::ranges::any_of(workspace_.runningApplications(), [pid](const auto& application) {
      return application.processIdentifier == pid;
    });
  }
  std::unique_ptr<Registration> observe(WorkspaceNotification name, std::string label) {
    return workspace_.addObserver(name, [this, label](const ApplicationNotification& info) {
      heard_.push_back(label + (info.application == nullptr ? "nobody" : pidText(info)));
      heardFrom_ = info.serialNumber;
    });
  }
  static std::string pidText(const ApplicationNotification& info) {
    return std::to_string(info.application->processIdentifier) + " " +
           info.application->bundleIdentifier;
  }

  ProcessManager& manager_ = platform_.processManager;
  Workspace& workspace_ = platform_.workspace;
  std::vector<std::string> heard_;
  ProcessSerialNumber heardFrom_;
};

TEST_P(ProcessesConformance, ALaunchedApplicationIsFoundByEveryKey) {
  const std::int32_t pid = stage_->launch("Quorvane", "QVPX"_4cc, "com.tallowmere.quorvane");
  stage_->turn();
  const ProcessSerialNumber psn = psnOf(pid);
  std::int32_t samePid = 0;
  EXPECT_EQ(manager_.GetProcessPID(psn, samePid), noErr);
  EXPECT_EQ(samePid, pid);
  EXPECT_EQ(std::ranges::count(walk(), psn), 1);
  std::array<std::uint8_t, 256> name{};
  ProcessInfoRec info;
  info.processName = name.data();
  EXPECT_EQ(manager_.GetProcessInformation(psn, info), noErr);
  EXPECT_EQ(info.processSignature, "QVPX"_4cc);
  EXPECT_EQ(info.processType, "APPL"_4cc);
  EXPECT_EQ(info.processNumber, psn);
  EXPECT_EQ(std::string(name.begin() + 1, name.begin() + 1 + name[0]), "Quorvane");
  EXPECT_TRUE(isListed(pid));
  EXPECT_EQ(manager_.WakeUpProcess(psn), noErr);
}

TEST_P(ProcessesConformance, TheOwnProcessCounts) {
  ProcessSerialNumber own;
  std::int32_t pid = 0;
  EXPECT_EQ(manager_.GetCurrentProcess(own), noErr);
  EXPECT_EQ(manager_.GetProcessPID(kCurrentProcess, pid), noErr);
  EXPECT_EQ(psnOf(pid), own);
  EXPECT_EQ(std::ranges::count(walk(), own), 1);
  EXPECT_TRUE(isListed(pid));
}

TEST_P(ProcessesConformance, WhatIsAskedOfNobodyFailsAndChangesNothing) {
  const ProcessSerialNumber nobody{7, 7};
  ProcessSerialNumber psn{3, 4};
  std::int32_t pid = 5;
  ProcessInfoRec info;
  info.processSignature = 6;
  EXPECT_NE(manager_.GetProcessForPID(1'999'999'999, psn), noErr);
  EXPECT_NE(manager_.GetProcessPID(nobody, pid), noErr);
  EXPECT_NE(manager_.GetProcessInformation(nobody, info), noErr);
  EXPECT_NE(manager_.GetProcessInformation({}, info), noErr);
  EXPECT_NE(manager_.WakeUpProcess(nobody), noErr);
  EXPECT_NE(manager_.SetFrontProcess(nobody), noErr);
  EXPECT_EQ(psn, (ProcessSerialNumber{3, 4}));
  EXPECT_EQ(pid, 5);
  EXPECT_EQ(info.processSignature, 6U);
}

TEST_P(ProcessesConformance, ObserversHearOfComingGoingAndTheFront) {
  const auto first = observe(WorkspaceNotification::DidLaunchApplication, "launched ");
  const auto second = observe(WorkspaceNotification::DidActivateApplication, "front ");
  const auto third = observe(WorkspaceNotification::DidTerminateApplication, "gone ");
  auto cancelled = observe(WorkspaceNotification::DidLaunchApplication, "cancelled ");
  cancelled.reset();
  const std::int32_t pid = stage_->launch("Writer", "WRTR"_4cc, "com.example.letters");
  stage_->turn();
  const ProcessSerialNumber psn = psnOf(pid);
  EXPECT_EQ(heardFrom_, psn);
  stage_->bringToFront(pid);
  stage_->turn();
  ProcessSerialNumber front;
  EXPECT_EQ(manager_.GetFrontProcess(front), noErr);
  EXPECT_EQ(front, psn);
  ASSERT_NE(workspace_.frontmostApplication(), nullptr);
  EXPECT_EQ(workspace_.frontmostApplication()->processIdentifier, pid);
  EXPECT_EQ(workspace_.menuBarOwningApplication()->bundleIdentifier, "com.example.letters");
  stage_->quit(pid);
  stage_->turn();
  EXPECT_EQ(heardFrom_, psn);
  EXPECT_EQ(workspace_.frontmostApplication(), nullptr);
  EXPECT_NE(manager_.GetFrontProcess(front), noErr);
  EXPECT_FALSE(isListed(pid));
  EXPECT_EQ(std::ranges::count(walk(), psn), 0);
  const std::string text = std::to_string(pid) + " com.example.letters";
  EXPECT_EQ(heard_, (std::vector{"launched " + text, "front " + text, "gone " + text}));
}

}  // namespace quorvane::conformance
