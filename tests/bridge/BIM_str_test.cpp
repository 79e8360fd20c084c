#include "src/bridge/BIM_str.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvane {
namespace {

// A buffer with room and a recognisable filling.
struct Buffer {
  std::array<std::uint8_t, 600> bytes;
  explicit Buffer(const std::string& text = "") {
    bytes.fill('#');
    std::copy(text.begin(), text.end(), bytes.begin());
    bytes[text.size()] = 0;
  }
  std::uint8_t* data() { return bytes.data(); }
  std::string text() { return reinterpret_cast<const char*>(bytes.data()); }
  std::string raw(std::size_t count) { return {bytes.begin(), bytes.begin() + long(count)}; }
};

const std::uint8_t* bytesOf(const char* text) {
  return reinterpret_cast<const std::uint8_t*>(text);
}

TEST(BIMStr, BoundedCopyLosesTheTerminatorOfAStringThatFillsIt) {
  struct {
    std::int32_t n;
    std::int32_t result;
    std::string raw;
  } const rows[] = {{0, 0, "####"},
                    {-1, 0, "####"},
                    {3, 2, "aBc#"},
                    {4, 3, std::string("aBc\0", 4)},
                    {9, 3, std::string("aBc\0", 4)}};
  for (const auto& row : rows) {
    Buffer dst;
    dst.bytes.fill('#');
    EXPECT_EQ(strngcpy(dst.data(), bytesOf("aBc"), row.n), row.result) << row.n;
    EXPECT_EQ(dst.raw(4), row.raw) << row.n;
  }
  Buffer low;
  EXPECT_EQ(strngcpylow(low.data(), bytesOf("AB\xC8z"), 9), 4);
  EXPECT_EQ(low.text(), "ab\xC8z");
}

TEST(BIMStr, EndingsAreTakenOff) {
  const struct {
    std::string word, result;
    std::int32_t cut;
  } rows[] = {{"dogs", "dog", -1},  {"bus", "bus", 0},       {"cat's", "cat", -1},
              {"dogs'", "dog", -1}, {"cat\xD5s", "cat", -1}, {"cats\xD5", "cat", -1},
              {"word", "word", 0},  {"a'ss", "a's", -1},     {"a's'", "a'", -1},
              {"ab's", "ab", -1}};
  for (const auto& row : rows) {
    Buffer word(row.word);
    EXPECT_EQ(Singular(word.data()), row.cut) << row.word;
    EXPECT_EQ(word.text(), row.result);
  }
}

TEST(BIMStr, DecimalKeepsTheLowerDigits) {
  const struct {
    std::int64_t value;
    std::int32_t size;
    std::string text;
  } rows[] = {{-45, 16, "-45"},  {0, 16, "0"},       {0, 0, "0"},
              {12345, 3, "345"}, {-12345, 2, "-45"}, {INT64_MIN, 30, "-9223372036854775808"}};
  for (const auto& row : rows) {
    Buffer buffer;
    EXPECT_EQ(dectostr(row.value, row.size, buffer.data()), std::ssize(row.text));
    EXPECT_EQ(buffer.text(), row.text);
  }
  EXPECT_EQ(xtol(bytesOf("1a2"), 3), 12);
  EXPECT_EQ(xtol(bytesOf("1a2"), 2), 1);
  EXPECT_EQ(xtol(bytesOf("4294967297"), 10), 1);
}

TEST(BIMStr, HexadecimalShowsOverflowByAsterisks) {
  const struct {
    std::uint64_t value;
    std::int32_t size;
    std::string text;
  } rows[] = {
      {255, 16, "$FF"},     {10, 16, "$0A"},     {0, 16, "$00"}, {0x1FFFFFFF, 16, "$FFFFFFF"},
      {0x1234, 5, "$1234"}, {0x1234, 4, "****"}, {0x10, 0, "**"}};
  for (const auto& row : rows) {
    Buffer buffer;
    EXPECT_EQ(hextostr(row.value, row.size, buffer.data()), std::ssize(row.text));
    EXPECT_EQ(buffer.text(), row.text);
  }
}

TEST(BIMStr, PascalStringsKeepTheirOddities) {
  const std::uint8_t empty[] = {0};
  const std::uint8_t ab[] = {2, 'a', 'b'};
  EXPECT_EQ(Pstrcmp(empty, empty), 0);
  EXPECT_EQ(Pstrcmp(ab, ab), -1);
  EXPECT_EQ(Pstrcmp(ab, empty), 0);

  Buffer longOne(std::string(300, 'x'));
  CtoPstr(longOne.data());
  EXPECT_EQ(longOne.bytes[0], 255);
  Pstrcat(longOne.data(), ab);
  EXPECT_EQ(longOne.bytes[0], 1);  // wrapped
  EXPECT_EQ(longOne.bytes[256], 'a');

  for (const int length : {127, 128}) {
    Buffer text(std::string(1, char(length)) + std::string(200, 'y'));
    EXPECT_EQ(strnglen(PtoCstr(text.data())), length == 127 ? 127u : 0u);
  }
  Buffer once("zzz");
  CtoPstrCpy(once.data(), bytesOf("abc"));
  EXPECT_EQ(once.raw(3), std::string("\1\0z", 3));
}

TEST(BIMStr, ComparisonsReadBytesAsUnsigned) {
  EXPECT_GT(STRCMPAR(bytesOf("\xC8"), bytesOf("a")), 0);
  EXPECT_EQ(STRCMPAR(bytesOf("ab"), bytesOf("a")), 'b');
  EXPECT_EQ(STRCMPARNOCASE(bytesOf("A"), bytesOf("a")), 0);
  EXPECT_EQ(mklower(200), 200);
  EXPECT_EQ(mklower(256 + 'A'), 'A');
  EXPECT_EQ(CMPBLOCK("\xFF", "\x01", 1), 1);
  EXPECT_EQ(CMPBLOCK("a", "b", 0), 0);
  EXPECT_EQ(STRLSCHR(bytesOf("zab"), 'a'), 0);  // unsorted: the search ends at the z
  EXPECT_EQ(Vowelchk('y'), -1);
  EXPECT_EQ(Vowelchk(0), 0);
  EXPECT_EQ(Clslook1(211), -1);
  EXPECT_EQ(Clslook1(212), 0);
  EXPECT_EQ(Opunc('['), 2);
  EXPECT_EQ(Clpunc('['), 0);
  EXPECT_EQ(Opunc(0), 0);
}

}  // namespace
}  // namespace quorvane
