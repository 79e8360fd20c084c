#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
namespace {

using ToolRecord = BridgeTest;

TEST_F(ToolRecord, WordsLieBigEndianWhereTheOtherSideLooksForThem) {
  launch();
  const ToolRec record(process);
  ASSERT_TRUE(record);
  const struct {
    std::function<std::uint32_t(std::uint32_t)> put;
    std::function<std::uint32_t()> get;
    std::size_t lastByte;
  } rows[] = {
      {[&](auto v) { return PUT_TOOLCRECPTR(process, 0, v); },
       [&] { return GET_TOOLCRECPTR(process, 0); }, 71},
      {[&](auto v) { return PUT_TOOLCRECPTR(process, 51, v); },
       [&] { return GET_TOOLCRECPTR(process, 51); }, 275},
      {[&](auto v) { return PUT_TOOLCRECPTR(process, 54, v); },
       [&] { return GET_ONE_TOOLCRECPTR_QORVSTATUS(process, 54); }, 287},
      {[&](auto v) { return PUT_TOOLCRECPTR_STATUSFLAGS(process, 5, v); },
       [&] { return GET_TOOLCRECPTR_STATUSFLAGS(process, 5); }, 311},
      {[&](auto v) { return PUT_TOOLCRECPTR_QORVSTATUS(process, 1, v); },
       [&] { return GET_TOOLCRECPTR_QORVSTATUS(process, 1); }, 319},
      {[&](auto v) { return PUT_TOOLCRECPTR_INTERACTIVESCANPTR(process, 7, v); },
       [&] { return GET_TOOLCRECPTR_INTERACTIVESCANPTR(process, 7); }, 375},
  };
  for (const auto& row : rows) {
    row.put(0x01020308);
    EXPECT_EQ(row.get(), 0x01020308u) << row.lastByte;
    EXPECT_EQ(byteAt(row.lastByte), 8) << row.lastByte;
    EXPECT_EQ(byteAt(row.lastByte - 3), 1) << row.lastByte;
  }
}

TEST_F(ToolRecord, BitsCountFromTheLowEnd) {
  launch();
  const ToolRec record(process);
  BSET_TOOLCRECPTR(process, 54, 16);
  BSET_TOOLCRECPTR(process, 54, 31);
  EXPECT_EQ(app.field(54), 0x80010000u);
  BCLR_TOOLCRECPTR(process, 54, 31);
  EXPECT_EQ(app.field(54), 0x10000u);
  BSET_TOOLCRECPTR(process, 54, 32);
  EXPECT_EQ(app.field(54), 0x10000u);
  BSET_TOOLCRECPTR_INTERACTIVESCANPTR(process, 4, 3);
  EXPECT_EQ(BTST_TOOLCRECPTR_INTERACTIVESCANPTR(process, 4, 3), 8u);
  EXPECT_EQ(BTST_TOOLCRECPTR_INTERACTIVESCANPTR(process, 4, 2), 0u);
  EXPECT_EQ(app.scanEntry(4), 8u);
}

TEST_F(ToolRecord, NothingIsTouchedOutsideTheRecordOrWithoutIt) {
  launch();
  EXPECT_EQ(PUT_TOOLCRECPTR(process, 51, 8), 0u);  // not attached yet
  EXPECT_EQ(app.field(51), 0u);
  const ToolRec record(process);
  host.sharedMemory.writeWord(app.segment(880), 376, 0x11111111);  // same page, behind the record
  for (const std::uint32_t i : {77u, 0x3FFFFFEFu, 0x40000000u, 0xFFFFFFFFu}) {
    EXPECT_EQ(PUT_TOOLCRECPTR(process, i, 5), 0u) << i;
    EXPECT_EQ(GET_TOOLCRECPTR(process, i), 0u) << i;
  }
  EXPECT_EQ(GET_TOOLCRECPTR_INTERACTIVESCANPTR(process, 8), 0u);
  EXPECT_EQ(host.sharedMemory.readWord(app.segment(880), 376), 0x11111111u);
}

TEST_F(ToolRecord, OneAttachmentServesUntilTheMasterClose) {
  launchKnown();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Init_Toolversion(process), 1);
  EXPECT_EQ(app.field(51), 8u);
  EXPECT_EQ(app.field(10), 1u);
  EXPECT_TRUE(logged("IMK ToolCRecPtr_Version 8"));
  std::uint8_t* const old = GetToolCRecPtr(process);
  MasterCloseToolRecPtr(process);
  MasterCloseToolRecPtr(process);
  CloseToolRecPtr(process, old);  // detached already: the failure is ignored
  EXPECT_NE(GetToolCRecPtr(process), nullptr);
  const std::string attach = "shmat " + std::to_string(app.segment(880)) + " 0666 -> attached";
  EXPECT_EQ(host.journal.take(),
            (Lines{"shmget 880 376 0666 -> " + std::to_string(app.segment(880)), attach,
                   "shmdt " + std::to_string(app.segment(880)) + " -> 0", "shmdt - -> -1",
                   "shmget 880 376 0666 -> " + std::to_string(app.segment(880)), attach}));
}

TEST_F(ToolRecord, AbsentMainApplicationCostsNoCallAndNoLine) {
  EXPECT_EQ(Init_Toolversion(process), 0);
  EXPECT_EQ(IS_MACHPORT_BUSY(process), 0);
  SET_MACHPORT_BUSY(process, 1);
  EXPECT_EQ(CheckCurrentCheckStatus(process, true), 0u);
  EXPECT_EQ(host.journal.take(), Lines{});
  EXPECT_TRUE(host.log.lines.empty());
}

TEST_F(ToolRecord, AMissingSegmentIsAskedForTwiceAndLogged) {
  launchKnown();
  host.sharedMemory.remove(app.segment(880));
  EXPECT_EQ(GetToolCRecPtr(process), nullptr);
  EXPECT_EQ(GetSharedMemoryBlock(process, 881), nullptr);
  EXPECT_EQ(GetSharedMemoryBlock(process, 0), nullptr);
  EXPECT_EQ(host.journal.take(), (Lines{"shmget 880 376 0666 -> -1", "shmget 880 376 0 -> -1",
                                        "shmget 881 0 0666 -> -1", "shmget 881 0 0 -> -1"}));
  EXPECT_TRUE(logged("*-*-* Shared Mem Err - 880"));
  EXPECT_TRUE(logged("*-*-* Shared Mem Err - 881"));
}

TEST_F(ToolRecord, AFailingAttachIsHandedBackAndIsNoRecordToAnyone) {
  launchKnown();
  for (const std::uint32_t key : {880u, 893u, 896u, 897u}) {
    host.sharedMemory.failAttach(key, memory::AttachFailure::Failed);
  }
  EXPECT_EQ(GetSharedMemoryBlock(process, 880), kShmFailed);
  EXPECT_FALSE(ToolRec(process));
  EXPECT_FALSE(InteractiveTextRecord(process));
  EXPECT_EQ(GetAEToolEventSelectRecordPtr(process), nullptr);
  EXPECT_EQ(GetAEToolMenuSelectRecordPtr(process), nullptr);
  EXPECT_TRUE(logged("******** NO QUORVANEAPPCOM"));
  EXPECT_TRUE(logged("******** NO QUORVANE_COMMUNICATE_APPMENUBUF"));
  const Lines calls = host.journal.take();
  EXPECT_TRUE(std::none_of(calls.begin(), calls.end(),
                           [](const auto& call) { return call.starts_with("shmdt"); }));
}

TEST_F(ToolRecord, ASegmentTooSmallIsNoRecord) {
  for (const auto& [key, size] :
       {std::pair{880u, 375u}, {893u, 392u}, {896u, 407u}, {897u, 383u}}) {
    app.segmentSizes[key] = size;
    app.segmentOptions[key].wholePages = false;
  }
  launchKnown();
  EXPECT_EQ(GetToolCRecPtr(process), nullptr);
  EXPECT_EQ(GetAEToolEventSelectRecordPtr(process), nullptr);
  EXPECT_EQ(GetAEToolMenuSelectRecordPtr(process), nullptr);
  host.journal.clear();
  // This one can be attached, as less is asked for, and is let go again.
  EXPECT_TRUE(InteractiveTextRecord(process).bytes().empty());
  const std::string id = std::to_string(app.segment(893));
  EXPECT_EQ(host.journal.take(),
            (Lines{"shmget 893 384 0666 -> " + id, "shmat " + id + " 0666 -> attached",
                   "shmdt " + id + " -> 0"}));
}

TEST_F(ToolRecord, TheTextRecordIsHeldForOneUse) {
  launch();
  {
    const InteractiveTextRecord record(process);
    ASSERT_EQ(record.bytes().size(), 393u);
    record.bytes()[392] = 'k';
  }
  EXPECT_EQ(app.published().keyByte, 'k');
  EXPECT_EQ(host.sharedMemory.totalAttachments(), 0u);
}

TEST_F(ToolRecord, ANewAddressRaisesTheMenuFlag) {
  launch();
  GetToolCRecPtr(process);
  EXPECT_EQ(is_SETMENUFLAG(process), 1u);
  set_SETMENUFLAG(process, 0);
  GetToolCRecPtr(process);
  EXPECT_EQ(is_SETMENUFLAG(process), 0u);
  app.vanish(memory::Notice::Missed);
  EXPECT_NE(Get_OPENGlobalToolCRecPtr(process), nullptr);  // still attached, though gone
  EXPECT_EQ(ISOPENTOOLREC(process), 0);
  EXPECT_EQ(Get_OPENGlobalToolCRecPtr(process), nullptr);
  EXPECT_EQ(GetToolCRecPtr(process), nullptr);
  EXPECT_EQ(is_SETMENUFLAG(process), 1u);
}

TEST_F(ToolRecord, TheClientNameIsCappedAndOnlyAClientHasOne) {
  launch();
  memory::MemoryProcess& self = *host.processes.find(memory::MemoryProcesses::self());
  const std::string name = std::string(58, 'n') + "xy";
  self.name = name;
  self.mode = 0;
  self.type = "APPL"_4cc;
  EXPECT_EQ(CheckCurrentCheckStatus(process, true), 0u);
  EXPECT_EQ(app.clientName(), std::string(58, 'n'));
  EXPECT_EQ(byteAt(4 + 1 + 58), 0);

  for (const auto& spoil : std::vector<std::function<void(memory::MemoryProcess&)>>{
           [](auto& p) { p.name.clear(); }, [](auto& p) { p.mode = modeOnlyBackground; },
           [](auto& p) { p.type = "FNDR"_4cc; }, [](auto& p) { p.signature = "QVPX"_4cc; },
           [](auto& p) { p.informationFails = true; }}) {
    const memory::MemoryProcess whole = self;
    CheckCurrentCheckStatus(process, true);
    spoil(self);
    CheckCurrentCheckStatus(process, true);
    EXPECT_EQ(app.clientName(), "");
    self = whole;
  }
  CheckCurrentCheckStatus(process, true);
  app.setField(41, 7);
  self.name = "later";
  EXPECT_EQ(CheckCurrentCheckStatus(process, true), 7u);
  EXPECT_EQ(app.clientName(), std::string(58, 'n'));  // a running check leaves the name
}

TEST_F(ToolRecord, TheBusyWordSpeaksOnTheConsole) {
  launchKnown();
  Set_ToolCRecPtr_unusedx2(process, 1);
  EXPECT_EQ(IS_TOOL_BUSY(process), 1);
  EXPECT_TRUE(logged("** TOOL_BUSY ToolCRecPtr_unusedx2 IMK"));
  EXPECT_EQ(Get_ToolCRecPtr_unusedx2(process), 1u);
  Set_ToolCRecPtr_unusedx2(process, 0);
  EXPECT_EQ(Get_ToolCRecPtr_unusedx2(process), 0u);
  EXPECT_EQ(IS_TOOL_BUSY(process), 0);
  EXPECT_EQ(
      Lines(host.console.lines.begin(), host.console.lines.end()),
      (Lines{"IMK set ToolCRecPtr_unusedx2 set\n", "IMK get ToolCRecPtr_unusedx2 set\n",
             "IMK set ToolCRecPtr_unusedx2 clear\n", "IMK get ToolCRecPtr_unusedx2 clear\n"}));
}

TEST_F(ToolRecord, TheCreatingAttachClearsTheBlockAndNamesItsFailures) {
  EXPECT_NE(GETSAFEMEMBLOCK(process, 880, 376, 0), nullptr);
  const int id = *host.sharedMemory.find(880);
  EXPECT_EQ(process.state<SharedMemoryState>().shmid[0], id);
  EXPECT_TRUE(logged("SYS V -  shmem key: 880  -  376 bytes"));
  host.sharedMemory.writeWord(id, 372, 0xFFFFFFFF);
  EXPECT_NE(GETSAFEMEMBLOCK(process, 880, 376, 0), nullptr);
  EXPECT_EQ(host.sharedMemory.readWord(id, 372), 0u);
  host.sharedMemory.failAttach(880, memory::AttachFailure::Failed);
  EXPECT_EQ(GETSAFEMEMBLOCK(process, 880, 376, 0), kShmFailed);
  EXPECT_EQ(delete_segment(process, id), 0);
  EXPECT_EQ(delete_segment(process, 99), -1);

  host.sharedMemory.create(896, 408, {.refused = true});
  EXPECT_EQ(GETSAFEMEMBLOCK(process, 896, 408, 1), nullptr);
  EXPECT_TRUE(logged("shmget failed: key already in use permission denied\n"));
  EXPECT_TRUE(logged("shmget result: -1"));
  EXPECT_EQ(GETSAFEMEMBLOCK(process, 896, 408, 99), nullptr);
}

}  // namespace
}  // namespace quorvane::test
