// Characters looked up in layouts made by hand, most of them broken.

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "hosts/memory/MemoryHost.h"
#include "src/keys/AsciiToKeyCode.h"

namespace quorvane {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Words = std::vector<std::uint16_t>;
using Patches = std::vector<std::pair<std::size_t, std::uint16_t>>;  ///< words at byte offsets

Bytes patched(const std::vector<Words>& rows, const Patches& patches = {}) {
  Bytes bytes;
  for (const Words& row : rows) {
    const auto* first = reinterpret_cast<const std::uint8_t*>(row.data());
    bytes.insert(bytes.end(), first, first + 2 * row.size());
  }
  for (const auto& [offset, word] : patches) std::memcpy(bytes.data() + offset, &word, sizeof word);
  return bytes;
}

constexpr std::size_t kTypeCount = 8, kTables1 = 24, kRecords1 = 28, kTables2 = 52, kRecords2 = 56;
constexpr std::size_t kIndex = 68, kTableA = 84, kTableB = 92, kRecords = 100;
const std::vector<Words> kLayout{
    {0x1002, 0, 0, 0, 2, 0},
    {0, 0, 0, 0, 0, 0, kIndex, 0, kRecords, 0, 0, 0, 0, 0},
    {0, 0, 0, 0, 0, 0, kIndex, 0, 0, 0, 0, 0, 0, 0},
    {0x4001, 4, 2, 0, kTableA, 0, kTableB, 0},
    {'a', 0x4000, 0x8061, 0x4001},
    {'A', 0xE9, 0xFFFE, 'a'},
    {0x5001, 1, 112, 0, 114, 0, 'r', 's'},  // one record more than are counted
};

struct LayoutWalk : testing::Test {
  /// `bytes` is a copy of its own, so that one byte too far is seen.
  std::uint32_t find(const Bytes& bytes, int character) {
    std::int32_t shift = 0;
    std::int32_t option = 0;
    return keyCodeForCharWithLayout(instance, static_cast<std::int8_t>(character), bytes, shift,
                                    option);
  }

  memory::MemoryHost host;
  Instance instance{host.platform()};
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
      {"of a later table", {}, 'A', 0},
      {"an earlier table wins", {}, 'a', 0},
      {"of a state record", {}, 'r', 1},
      {"of the record behind the last", {}, 's', 3},
      {"but of none behind that", {{kTableA + 6, 0x4002}}, 's', kNone},
      {"no records for this entry", {{kRecords1, 0}, {4, 112}}, 'r', kNone},
      {"records of another format", {{kRecords, 0x5002}}, 'r', kNone},
      {"a sequence", {{kTableA, 'x'}, {kTableB + 6, 'x'}}, 'a', kNone},
      {"no character", {{kTableA, 0xFFFF}}, -1, kNone},
      {"from 0x80 on nothing is found", {}, 0xE9, kNone},
      {"nor a sign-extended unit", {{kTableA, 0xFFE9}}, 0xE9, kNone},
      {"tables of another format", {{kIndex, 0x4002}}, 'a', kNone},
      {"an entry without tables is skipped", {{kTables1, 0}, {kRecords2, kRecords}}, 'r', 1},
      {"an earlier entry wins", {{kRecords1, 0}, {kRecords2, kRecords}, {kTableB, 'r'}}, 'r', 0},
      {"a table at the last byte", {{kIndex + 8, 115}}, 'a', 3},
      {"tables out of reach", {{kIndex + 8, 0xFFFF}, {kIndex + 12, 117}}, 'a', kNone},
      {"the list's end", {{0, 'q'}, {kRecords + 2, 0x3FFF}, {kTableA, 0x7FFF}}, 'q', kNone},
      {"a record out of reach", {{kRecords + 4, 115}}, 'r', kNone},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(find(patched(kLayout, one.patches), one.character), one.key) << one.what;
  }
}

// Outside the bytes there is no character, not even that of code 0.
TEST_F(LayoutWalk, ALayoutMayEndAnywhere) {
  const Bytes whole = patched(kLayout);
  const Bytes greedy = patched(kLayout, {{kTypeCount + 2, 0xFFFF},
                                         {kIndex + 2, 0xFFFF},
                                         {kIndex + 6, 0xFFFF},
                                         {kRecords + 2, 0xFFFF}});
  for (std::ptrdiff_t length = 0; length < std::ssize(whole); ++length) {
    const Bytes cut(whole.begin(), whole.begin() + length);
    EXPECT_EQ(find(cut, 'a'), length < std::ssize(whole) - 30 ? 65535u : 0u) << length;
    EXPECT_EQ(find(cut, 0), 65535u) << length;
    find({greedy.begin(), greedy.begin() + length}, 'z');
  }
}

// 2,000 entries of one index of 1,300 times the same table of 16,000 keys.
TEST_F(LayoutWalk, OverlappingTablesEndToo) {
  Words words(32768);
  std::fill_n(words.begin(), 6, 0x4001);
  for (std::size_t entry = 6; entry < 28000; entry += 14) words[entry + 6] = 60012;
  std::fill_n(words.begin() + 60012 / 2, 4, 0x4001);
  EXPECT_EQ(find(patched({words}), 'z'), 65535u);
}

}  // namespace
}  // namespace quorvane
