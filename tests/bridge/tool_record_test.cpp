#include <utility>

#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

using ToolRecord = BridgeTest;

TEST_F(ToolRecord, BitsCountFromTheLowEnd) {
  launch();
  const ToolRec record(instance);
  BSET_TOOLCRECPTR(record, 54, 16);
  BSET_TOOLCRECPTR(record, 54, 31);
  BCLR_TOOLCRECPTR(record, 54, 31);
  BSET_TOOLCRECPTR(record, 54, 32);  // no such bit
  EXPECT_EQ(app.field(54), 0x10000u);
  EXPECT_EQ(GET_ONE_TOOLCRECPTR_QORVSTATUS(instance, 54), 0x10000u);  // the array's
  BSET_TOOLCRECPTR_INTERACTIVESCANPTR(record, 4, 3);
  EXPECT_EQ(BTST_TOOLCRECPTR_INTERACTIVESCANPTR(record, 4, 3), 8u);
}

TEST_F(ToolRecord, NothingIsTouchedOutsideTheRecordOrWithoutIt) {
  EXPECT_EQ(PUT_TOOLCRECPTR(ToolRec(instance), 51, 8), 0u);  // nothing to attach
  launch();
  const ToolRec record(instance);
  host.sharedMemory.writeWord(app.segment(880), 376, 0x11111111);  // same page, behind the record
  for (const std::uint32_t i : {77u, 0x3FFFFFEFu, 0x40000000u, 0xFFFFFFFFu}) {
    EXPECT_EQ(PUT_TOOLCRECPTR(record, i, 5), 0u) << i;
    EXPECT_EQ(GET_TOOLCRECPTR(record, i), 0u) << i;
  }
  EXPECT_EQ(GET_TOOLCRECPTR_INTERACTIVESCANPTR(record, 8), 0u);
  EXPECT_EQ(host.sharedMemory.readWord(app.segment(880), 376), 0x11111111u);
}

TEST_F(ToolRecord, OneAttachmentServesUntilTheMasterClose) {
  launchKnown();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Init_Toolversion(instance), 1);
  EXPECT_EQ(app.field(51), 8u);
  EXPECT_EQ(app.field(10), 1u);
  EXPECT_TRUE(logged("IMK ToolCRecPtr_Version 8"));
  std::uint8_t* const old = GetToolCRecPtr(instance);
  MasterCloseToolRecPtr(instance);
  MasterCloseToolRecPtr(instance);
  CloseToolRecPtr(instance, old);  // detached already: the failure is ignored
  EXPECT_NE(GetToolCRecPtr(instance), nullptr);
  const std::string id = std::to_string(app.segment(880));
  EXPECT_EQ(host.journal.take(),
            (Lines{"shmget 880 376 0666 -> " + id, "shmat " + id + " 0666 -> attached",
                   "shmdt " + id + " -> 0", "shmdt - -> -1", "shmget 880 376 0666 -> " + id,
                   "shmat " + id + " 0666 -> attached"}));
}

TEST_F(ToolRecord, AMissingSegmentIsAskedForTwiceAndNamed) {
  EXPECT_EQ(CheckCurrentCheckStatus(instance, true), 0u);
  EXPECT_EQ(Init_Toolversion(instance), 0);
  launchKnown();
  host.sharedMemory.remove(app.segment(880));
  EXPECT_EQ(GetToolCRecPtr(instance), nullptr);
  EXPECT_EQ(GetSharedMemoryBlock(instance, 881), nullptr);
  EXPECT_EQ(GetSharedMemoryBlock(instance, 0), nullptr);
  EXPECT_EQ(host.journal.take(), (Lines{"shmget 880 376 0666 -> -1", "shmget 880 376 0 -> -1",
                                        "shmget 881 0 0666 -> -1", "shmget 881 0 0 -> -1"}));
  EXPECT_TRUE(logged("*-*-* Shared Mem Err - 881"));
}

TEST_F(ToolRecord, AFailingAttachIsHandedBackAndIsNoRecordToAnyone) {
  launchKnown();
  for (const std::uint32_t key : {880u, 893u, 896u, 897u}) {
    host.sharedMemory.failAttach(key, memory::AttachFailure::Failed);
  }
  EXPECT_EQ(GetSharedMemoryBlock(instance, 880), kShmFailed);
  EXPECT_FALSE(ToolRec(instance));
  EXPECT_FALSE(InteractiveTextRecord(instance));
  EXPECT_EQ(GetAEToolEventSelectRecordPtr(instance), nullptr);
  EXPECT_EQ(GetAEToolMenuSelectRecordPtr(instance), nullptr);
  EXPECT_TRUE(logged("******** NO QUORVANEAPPCOM"));
  EXPECT_TRUE(logged("******** NO QUORVANE_COMMUNICATE_APPMENUBUF"));
  const Lines calls = host.journal.take();
  EXPECT_TRUE(std::none_of(calls.begin(), calls.end(),
                           [](const auto& call) { return call.starts_with("shmdt"); }));
}

TEST_F(ToolRecord, WhatIsLeftOfAMainApplicationIsLetGo) {
  launch();
  GetToolCRecPtr(instance);
  EXPECT_EQ(std::exchange(instance.state<SharedMemoryState>().SETMENUFLAG, 0u), 1u);
  app.vanish(memory::Notice::Missed);
  ISOPENTOOLREC(instance);
  EXPECT_EQ(host.sharedMemory.totalAttachments(), 0u);
  EXPECT_EQ(GetToolCRecPtr(instance), nullptr);
  EXPECT_EQ(is_SETMENUFLAG(instance), 1u);
}

TEST_F(ToolRecord, AWishForMenusIsTakenBackByWhoHeedsIt) {
  launch();
  app.setField(21, 0x1000F);
  EXPECT_EQ(Get_IMK_updateMenus(instance, 0x6), 1);
  EXPECT_EQ(Get_InputMethod_UpdateMenus(instance, 0x6), 1);
  EXPECT_EQ(app.field(21), 0x10009u);
  EXPECT_EQ(Get_InputMethod_UpdateMenus(instance, 0x10006), 0);
  EXPECT_EQ(app.field(21), 0x10009u);
}

TEST_F(ToolRecord, TheClientNameIsCappedAndOnlyAClientHasOne) {
  launch();
  memory::MemoryProcess& self = *host.processes.find(memory::MemoryProcesses::self());
  self.name = std::string(58, 'n') + "xy";
  self.mode = 0;
  self.type = "APPL"_4cc;
  EXPECT_EQ(CheckCurrentCheckStatus(instance, true), 0u);
  EXPECT_EQ(app.clientName(), std::string(58, 'n'));
  EXPECT_EQ(byteAt(4 + 1 + 58), 0);

  self.mode = modeOnlyBackground;
  CheckCurrentCheckStatus(instance, true);
  EXPECT_EQ(app.clientName(), "");
  self.mode = 0;
  CheckCurrentCheckStatus(instance, true);
  app.setField(41, 7);
  self.name = "later";
  EXPECT_EQ(CheckCurrentCheckStatus(instance, true), 7u);
  EXPECT_EQ(app.clientName(), std::string(58, 'n'));  // a running check leaves the name
}

TEST_F(ToolRecord, TheCreatingAttachClearsTheBlockAndNamesItsFailures) {
  EXPECT_NE(GETSAFEMEMBLOCK(instance, 880, 376, 0), nullptr);
  const int id = *host.sharedMemory.find(880);
  host.sharedMemory.writeWord(id, 372, 0xFFFFFFFF);
  EXPECT_NE(GETSAFEMEMBLOCK(instance, 880, 376, 0), nullptr);
  EXPECT_EQ(host.sharedMemory.readWord(id, 372), 0u);
  host.sharedMemory.failAttach(880, memory::AttachFailure::Failed);
  EXPECT_EQ(GETSAFEMEMBLOCK(instance, 880, 376, 0), kShmFailed);
  EXPECT_EQ(delete_segment(instance, id), 0);
  host.sharedMemory.create(896, 408, {.refused = true});
  EXPECT_EQ(GETSAFEMEMBLOCK(instance, 896, 408, 1), nullptr);
  EXPECT_TRUE(logged("shmget failed: key already in use permission denied"));
  EXPECT_EQ(GETSAFEMEMBLOCK(instance, 896, 408, 99), nullptr);
}

}  // namespace
}  // namespace quorvane::test
