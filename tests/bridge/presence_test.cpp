#include "src/base/OSVersion.h"
#include "src/bridge/QBIMLaunchServer.h"
#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

class Presence : public BridgeTest {
 protected:
  PresenceState& presence() { return instance.state<PresenceState>(); }
  LaunchServerState& launched() { return instance.state<LaunchServerState>(); }
};

TEST_F(Presence, HalfASerialNumberIsUnknownAndTheScanAnswers) {
  presence().quorvane_psn = {1, 0};
  EXPECT_EQ(IsQUORVANEAPPRUNNING(instance), 0);
  launch();
  EXPECT_EQ(IsQUORVANEAPPRUNNING(instance), 1);
  EXPECT_EQ(presence().quorvane_psn, (ProcessSerialNumber{1, 0}));  // the scan keeps nothing
}

TEST_F(Presence, TheFrontIsComparedByProcessId) {
  EXPECT_EQ(isQUORVANEAPP_FRONT(instance), 1);  // neither is known
  presence().front_app_pid = 4243;
  EXPECT_EQ(isQUORVANEAPP_FRONT(instance), 0);
  launch();
  EXPECT_EQ(isQUORVANEFRONTAPP(instance), 0);
  presence().front_app_pid = get_quorvane_pid(instance);
  EXPECT_EQ(isQUORVANEAPP_FRONT(instance), 1);
  app.vanish(memory::Notice::Missed);
  EXPECT_EQ(get_quorvane_pid(instance), presence().front_app_pid);  // cached
}

TEST_F(Presence, LookingForTheMainApplicationKeepsWhatItFinds) {
  EXPECT_EQ(Init_GetQUORVANEPROCESS(instance), 0);
  EXPECT_EQ(WakeUpQuorvaneProcess(instance), noErr);
  launch();
  EXPECT_EQ(GetQUORVANEPROCESS(instance), 1);
  EXPECT_EQ(launched().Quorvaneprocess, app.psn());
  EXPECT_FALSE(isKnown(presence().quorvane_psn));
  ProcessSerialNumber found;
  EXPECT_EQ(GetQORVPROCESSRUNNING(instance, &found), 1);
  EXPECT_EQ(presence().quorvane_psn, app.psn());
  EXPECT_EQ(presence().quorvane_pid, launched().qorvpid);
  GetToolCRecPtr(instance);
  Set_Quorvane_Is_Active(instance, 1);
  EXPECT_NE(Get_OPENGlobalToolCRecPtr(instance), nullptr);
  Set_Quorvane_Is_Active(instance, 0);
  EXPECT_EQ(Get_OPENGlobalToolCRecPtr(instance), nullptr);
}

TEST_F(Presence, AProcessIsLookedForBySignature) {
  host.processes.find(memory::MemoryProcesses::self())->informationFails = true;  // skipped
  memory::MemoryProcess second;
  second.signature = "TWIN"_4cc;
  const ProcessSerialNumber twin = host.processes.add(second);
  ProcessSerialNumber psn = memory::MemoryProcesses::editor();
  std::int32_t pid = 5;
  EXPECT_EQ(Get_SPECIFIED_PROCESS(instance, "WRTR"_4cc, psn, &pid), 1);
  EXPECT_EQ(pid, 5);  // confirmed: nothing changes
  EXPECT_EQ(Get_SPECIFIED_PROCESS(instance, "TWIN"_4cc, psn, &pid), 1);
  EXPECT_EQ(psn, twin);
  EXPECT_EQ(pid, host.processes.find(twin)->pid);
  EXPECT_EQ(Get_SPECIFIED_PROCESS(instance, "none"_4cc, psn, &pid), 0);
  EXPECT_EQ(psn, ProcessSerialNumber{});
  EXPECT_EQ(pid, 0);
}

}  // namespace
}  // namespace quorvane::test
