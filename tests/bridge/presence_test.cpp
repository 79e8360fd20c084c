#include "src/base/OSVersion.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

class Presence : public BridgeTest {
 protected:
  PresenceState& presence() { return process.state<PresenceState>(); }
  LaunchServerState& launched() { return process.state<LaunchServerState>(); }
};

TEST_F(Presence, HalfASerialNumberIsUnknownAndTheScanAnswers) {
  presence().quorvane_psn = {1, 0};
  EXPECT_EQ(IsQUORVANEAPPRUNNING(process), 0);
  launch();
  EXPECT_EQ(IsQUORVANEAPPRUNNING(process), 1);
  EXPECT_EQ(presence().quorvane_psn, (ProcessSerialNumber{1, 0}));  // the scan keeps nothing
}

TEST_F(Presence, TheFrontIsComparedByProcessId) {
  EXPECT_EQ(isQUORVANEAPP_FRONT(process), 1);  // neither is known
  presence().front_app_pid = 4243;
  EXPECT_EQ(isQUORVANEAPP_FRONT(process), 0);
  launch();
  EXPECT_EQ(isQUORVANEFRONTAPP(process), 0);
  presence().front_app_pid = get_quorvane_pid(process);
  EXPECT_EQ(isQUORVANEAPP_FRONT(process), 1);
  app.vanish(memory::Notice::Missed);
  EXPECT_EQ(get_quorvane_pid(process), presence().front_app_pid);  // cached
}

TEST_F(Presence, LookingForTheMainApplicationKeepsWhatItFinds) {
  EXPECT_EQ(Init_GetQUORVANEPROCESS(process), 0);
  EXPECT_EQ(WakeUpQuorvaneProcess(process), noErr);
  launch();
  EXPECT_EQ(GetQUORVANEPROCESS(process), 1);
  EXPECT_EQ(launched().Quorvaneprocess, app.psn());
  EXPECT_FALSE(isKnown(presence().quorvane_psn));
  ProcessSerialNumber found;
  EXPECT_EQ(GetQORVPROCESSRUNNING(process, &found), 1);
  EXPECT_EQ(presence().quorvane_psn, app.psn());
  EXPECT_EQ(presence().quorvane_pid, launched().qorvpid);
  GetToolCRecPtr(process);
  Set_Quorvane_Is_Active(process, 1);
  EXPECT_NE(Get_OPENGlobalToolCRecPtr(process), nullptr);
  Set_Quorvane_Is_Active(process, 0);
  EXPECT_EQ(Get_OPENGlobalToolCRecPtr(process), nullptr);
}

TEST_F(Presence, AProcessIsLookedForBySignature) {
  host.processes.find(memory::MemoryProcesses::self())->informationFails = true;  // skipped
  memory::MemoryProcess second;
  second.signature = "TWIN"_4cc;
  const ProcessSerialNumber twin = host.processes.add(second);
  ProcessSerialNumber psn = memory::MemoryProcesses::editor();
  std::int32_t pid = 5;
  EXPECT_EQ(Get_SPECIFIED_PROCESS(process, "WRTR"_4cc, psn, &pid), 1);
  EXPECT_EQ(pid, 5);  // confirmed: nothing changes
  EXPECT_EQ(Get_SPECIFIED_PROCESS(process, "TWIN"_4cc, psn, &pid), 1);
  EXPECT_EQ(psn, twin);
  EXPECT_EQ(pid, host.processes.find(twin)->pid);
  EXPECT_EQ(Get_SPECIFIED_PROCESS(process, "none"_4cc, psn, &pid), 0);
  EXPECT_EQ(psn, ProcessSerialNumber{});
  EXPECT_EQ(pid, 0);
}

}  // namespace
}  // namespace quorvane::test
