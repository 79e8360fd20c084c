// Characters looked up in layouts made by hand, most of them broken.

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "hosts/memory/MemoryHost.h"
#include "platform/UCKeyboardLayout.h"
#include "src/keys/AsciiToKeyCode.h"

namespace quorvane {
namespace {

struct Patch {
  std::size_t offset;
  std::uint32_t value;
  std::size_t size = 2;
};
using Patches = std::vector<Patch>;
using Bytes = std::vector<std::uint8_t>;

Bytes patched(Bytes bytes, const Patches& patches) {
  for (const Patch& patch : patches) {
    std::memcpy(bytes.data() + patch.offset, &patch.value, patch.size);
  }
  return bytes;
}

constexpr std::size_t kTypes[] = {12, 40};
constexpr std::size_t kIndex = 68;  // two tables of four keys
constexpr std::size_t kTables[] = {84, 92};
constexpr std::size_t kRecords = 100;  // one record, and a second one that isn't counted
constexpr std::size_t kSecond = 114;

// Table 1: "a", record 0, a sequence, record 1. Table 2: "A", 0xE9, no character, "a".
const Bytes kLayout = patched(Bytes(116), {{0, 0x1002},
                                           {8, 2, 4},
                                           {kTypes[0] + 12, kIndex, 4},
                                           {kTypes[0] + 16, kRecords, 4},
                                           {kTypes[1] + 12, kIndex, 4},
                                           {kIndex, 0x4001},
                                           {kIndex + 2, 4},
                                           {kIndex + 4, 2, 4},
                                           {kIndex + 8, kTables[0], 4},
                                           {kIndex + 12, kTables[1], 4},
                                           {kTables[0], 'a' | 0x4000U << 16, 4},
                                           {kTables[0] + 4, 0x8061 | 0x4001U << 16, 4},
                                           {kTables[1], 'A' | 0xE9U << 16, 4},
                                           {kTables[1] + 4, 0xFFFE | 'a' << 16, 4},
                                           {kRecords, 0x5001},
                                           {kRecords + 2, 1},
                                           {kRecords + 4, 112, 4},
                                           {kRecords + 8, kSecond, 4},
                                           {112, 'r'},
                                           {kSecond, 's'}});

struct LayoutWalk : testing::Test {
  std::uint32_t find(const Bytes& bytes, int character) {
    // A copy of its own, so that one byte too far is seen.
    const Bytes exact(bytes.begin(), bytes.end());
    std::int32_t shift = 0;
    std::int32_t option = 0;
    return keyCodeForCharWithLayout(process, static_cast<std::int8_t>(character), exact, shift,
                                    option);
  }

  memory::MemoryHost host;
  Process process{host.platform()};
};

TEST_F(LayoutWalk, TheFirstOutputInTheOrderOfTheBytesCounts) {
  constexpr std::uint32_t kNone = 65535;
  struct Case {
    const char* what;
    Patches patches;
    int character;
    std::uint32_t key;
  };
  const Case cases[] = {
      {"a plain output", {}, 'a', 0},
      {"of a later table", {}, 'A', 0},
      {"a state record", {}, 'r', 1},
      {"the record behind the last", {}, 's', 3},
      {"but none behind that", {{kTables[0] + 6, 0x4002}}, 's', kNone},
      {"no records for this entry", {{kTypes[0] + 16, 0, 4}}, 'r', kNone},
      {"records of another format", {{kRecords, 0x5002}}, 'r', kNone},
      {"a sequence", {{kTables[0], 'x'}, {kTables[1] + 6, 'x'}}, 'a', kNone},
      {"no character", {{kTables[0], 0xFFFF}}, -1, kNone},
      {"from 0x80 on nothing is found", {}, 0xE9, kNone},
      {"nor a sign-extended unit", {{kTables[0], 0xFFE9}}, 0xE9, kNone},
      {"an earlier table wins", {{kTables[0], 'x'}}, 'a', 3},
      {"an entry of another format is skipped",
       {{kTypes[0] + 12, 0, 4}, {kTypes[1] + 16, kRecords, 4}},
       'r',
       1},
      {"an earlier entry wins",
       {{kTypes[0] + 16, 0, 4}, {kTypes[1] + 16, kRecords, 4}, {kTables[1], 'r'}},
       'r',
       0},
      {"no entries", {{8, 0, 4}}, 'a', kNone},
      {"a table at the last byte", {{kIndex + 8, 115, 4}}, 'a', 3},
      {"offsets out of reach", {{kIndex + 8, 0xFFFFFFFF, 4}, {kIndex + 12, 117, 4}}, 'a', kNone},
      {"a record out of reach", {{kRecords + 4, 115, 4}}, 'r', kNone},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(find(patched(kLayout, one.patches), one.character), one.key) << one.what;
  }
}

// Outside the bytes there is no character, not even that of code 0.
TEST_F(LayoutWalk, ALayoutMayEndAnywhere) {
  const Bytes greedy =
      patched(kLayout, {{8, 0xFFFFFFFF, 4}, {kIndex + 2, 0xFFFF}, {kIndex + 4, 0xFFFFFFFF, 4}});
  for (std::size_t length = 0; length < kLayout.size(); ++length) {
    const auto end = static_cast<std::ptrdiff_t>(length);
    const Bytes cut(kLayout.begin(), kLayout.begin() + end);
    EXPECT_EQ(find(cut, 'a'), length < kTables[0] + 2 ? 65535u : 0u) << length;
    EXPECT_EQ(find(cut, 0), 65535u) << length;
    find({greedy.begin(), greedy.begin() + end}, 'z');
  }
}

// 1,000 entries of one index with 8,880 times the same table of 32,768 keys.
TEST_F(LayoutWalk, OverlappingTablesEndToo) {
  Bytes bytes(65536, 0x41);
  std::memset(bytes.data() + 12, 0, 28 * 1000);
  for (std::size_t i = 0; i < 1000; ++i)
    bytes = patched(std::move(bytes), {{24 + 28 * i, 30000, 4}});
  bytes = patched(std::move(bytes), {{30000, 0x4001}, {30002, 0xFFFF}, {30004, 0xFFFFFFFF, 4}});
  std::memset(bytes.data() + 30008, 0, bytes.size() - 30008);
  EXPECT_EQ(find(bytes, 'z'), 65535u);
}

}  // namespace
}  // namespace quorvane
