#include "src/base/Text.h"

#include <gtest/gtest.h>

#include "src/base/ScreenPoint.h"

namespace quorvane {
namespace {

TEST(Text, EveryLengthOfUtf8AndUnpairedSurrogates) {
  EXPECT_EQ(toUtf8(u"a\u00e9\u20ac\U0001F600"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  const char16_t unpaired[] = {u'x', 0xD83D, u'y', 0xDE00};
  EXPECT_EQ(toUtf8({unpaired, 4}), "x\xEF\xBF\xBDy\xEF\xBF\xBD");
}

TEST(Text, FirstUtf8ByteIsTheLeadByteOfTheCharacter) {
  EXPECT_EQ(firstUtf8Byte(u""), 0);
  EXPECT_EQ(firstUtf8Byte(u"\U0001F600"), 0xF0);
  const char16_t high = 0xD83D;
  const char16_t low = 0xDE00;
  EXPECT_EQ(firstUtf8Byte({&high, 1}), 0) << "an unpaired surrogate has no UTF-8 form";
  EXPECT_EQ(firstUtf8Byte({&low, 1}), 0);
  EXPECT_EQ(firstUtf8Byte(u"\uFFFD"), 0xEF) << "the replacement character itself has one";
}

TEST(ScreenPoint, WhatIsNoScreenUnitIsZeroOrWraps) {
  EXPECT_EQ(toScreenUnit(65536.0 + 7), 7);
  EXPECT_EQ(toScreenUnit(1e300), 0);
  EXPECT_EQ(toScreenUnit(-1e300), 0);
  EXPECT_EQ(toScreenUnit(std::numeric_limits<double>::quiet_NaN()), 0);
}

}  // namespace
}  // namespace quorvane
