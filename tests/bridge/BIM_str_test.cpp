#include "src/bridge/BIM_str.h"

#include <tuple>

#include "tests/bridge/BridgeTest.h"

namespace quorvane::test {
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
  const std::tuple<std::int32_t, std::int32_t, std::string> rows[] = {
      {0, 0, "####"}, {-1, 0, "####"}, {3, 2, "abc#"}, {4, 3, {"abc\0", 4}}, {9, 3, {"abc\0", 4}}};
  for (const auto& [n, result, raw] : rows) {
    Buffer dst;
    dst.bytes.fill('#');
    EXPECT_EQ(strngcpylow(dst.data(), bytesOf("aBc"), n), result) << n;
    EXPECT_EQ(dst.raw(4), raw) << n;
    dst.bytes.fill('#');
    EXPECT_EQ(strngcpy(dst.data(), bytesOf("abc"), n), result) << n;
    EXPECT_EQ(dst.raw(4), raw) << n;
  }
}

TEST(BIMStr, WhatIsAppendedTakesThePlaceOfTheTerminator) {
  Buffer dst;
  EXPECT_EQ(strngcat(dst.data(), bytesOf("")), 0u);
  EXPECT_EQ(strngcat(dst.data(), bytesOf("ab")), 2u);
  EXPECT_EQ(strngcat(dst.data(), bytesOf("c")), 3u);
  EXPECT_EQ(dst.raw(5), std::string("abc\0#", 5));
}

TEST(BIMStr, EndingsAreTakenOff) {
  const std::pair<std::string, std::string> rows[] = {
      {"dogs", "dog"},  {"bus", "bus"},  {"cat's", "cat"}, {"dogs'", "dog"}, {"cat\xD5s", "cat"},
      {"word", "word"}, {"a'ss", "a's"}, {"a's'", "a'"},   {"ab's", "ab"}};
  for (const auto& [word, result] : rows) {
    Buffer buffer(word);
    EXPECT_EQ(Singular(buffer.data()), word == result ? 0 : -1) << word;
    EXPECT_EQ(buffer.text(), result);
  }
}

TEST(BIMStr, NumbersKeepTheirLowerDigits) {
  Buffer buffer;
  const std::tuple<std::int64_t, std::int32_t, std::string> decimals[] = {
      {-45, 16, "-45"},
      {0, 0, "0"},
      {12345, 3, "345"},
      {-12345, 2, "-45"},
      {INT64_MIN, 30, "-9223372036854775808"}};
  for (const auto& [value, size, text] : decimals) {
    EXPECT_EQ(dectostr(value, size, buffer.data()), std::ssize(text));
    EXPECT_EQ(buffer.text(), text);
  }
  const std::tuple<std::uint64_t, std::int32_t, std::string> hexadecimals[] = {
      {255, 16, "$FF"}, {10, 16, "$0A"},     {0, 16, "$00"},      {0x1FFFFFFF, 16, "$FFFFFFF"},
      {0x10, 0, "**"},  {0x1234, 4, "****"}, {0x1234, 5, "$1234"}};
  for (const auto& [value, size, text] : hexadecimals) {
    EXPECT_EQ(hextostr(value, size, buffer.data()), std::ssize(text));
    EXPECT_EQ(buffer.text(), text);
  }
  EXPECT_EQ(xtol(bytesOf("1a2"), 3), 12);
  EXPECT_EQ(xtol(bytesOf("4294967297"), 10), 1);
}

TEST(BIMStr, PascalStringsKeepTheirOddities) {
  const std::uint8_t empty[] = {0};
  const std::uint8_t ab[] = {2, 'a', 'b'};
  EXPECT_EQ(Pstrcmp(empty, empty), 0);
  EXPECT_EQ(Pstrcmp(ab, ab), -1);
  EXPECT_EQ(Pstrcmp(ab, Buffer("\3abc").data()), 0);

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

TEST(BIMStr, BytesAreUnsigned) {
  EXPECT_GT(STRCMPAR(bytesOf("\xC8"), bytesOf("a")), 0);
  EXPECT_EQ(STRCMPARNOCASE(bytesOf("Ab"), bytesOf("a")), 'b');
  EXPECT_EQ(CMPBLOCK("\xFF", "\x01", 1), 1);
  EXPECT_EQ(mklower(256 + 'A'), 'A');
  EXPECT_EQ(STRLSCHR(bytesOf("zab"), 'a'), 0);  // unsorted: the search ends at the z
  std::string vowels, closing;
  for (int byte = 0; byte < 256; ++byte) {
    if (Vowelchk(static_cast<std::uint8_t>(byte)) != 0) vowels += static_cast<char>(byte);
    if (Clslook1(static_cast<std::uint8_t>(byte)) != 0) closing += static_cast<char>(byte);
  }
  EXPECT_EQ(vowels, "aeiouy");
  EXPECT_EQ(closing, "\")*/:]}\xD2\xD3");
}

using StringList = BridgeTest;

TEST_F(StringList, AListThatLiesIsReadOnlyToItsEnd) {
  host.resources.openResult = 2;
  // Claims five strings: two are whole, the third says it is longer than what is left.
  host.resources.bundle[{"QSTR"_4cc, 131}] = {5, 0, 2, 'a', 'b', 1, 'c', 9, 'd'};
  host.resources.bundle[{"QSTR"_4cc, 132}] = {5};
  host.resources.UseResFile(host.resources.CFBundleOpenBundleResourceMap("any"));
  const std::pair<std::int32_t, std::string> rows[] = {{-1, "ab"}, {0, "ab"}, {1, "ab"}, {2, "c"},
                                                       {3, ""},    {4, ""},   {6, ""}};
  for (const auto& [index, text] : rows) {
    Buffer dst("old");
    EXPECT_EQ(RDCSTRG(instance, dst.data(), 131, index), text.size()) << index;
    EXPECT_EQ(dst.text(), text);
    EXPECT_EQ(RDPSTRG(instance, dst.data(), 131, index), text.size()) << index;
  }
  EXPECT_EQ(Get1IndString(instance, 132, 1), std::nullopt);
  EXPECT_EQ(Get1IndString(instance, 133, 1), std::nullopt);
}

}  // namespace
}  // namespace quorvane::test
