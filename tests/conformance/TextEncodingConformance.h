#pragma once
// What every host's TextEncoding must do. Instantiate TextEncodingConformance with a factory.

#include <gtest/gtest.h>

#include <memory>
#include <string_view>
#include <vector>

#include "platform/TextEncoding.h"

namespace quorvane::conformance {

struct TextEncodingStage {
  virtual ~TextEncodingStage() = default;
  virtual TextEncoding& textEncoding() = 0;
};

using TextEncodingFactory = std::unique_ptr<TextEncodingStage> (*)();

class TextEncodingConformance : public testing::TestWithParam<TextEncodingFactory> {
 protected:
  std::optional<std::u16string> decode(std::string_view bytes, NSStringEncoding encoding) {
    return encoding_.initWithData(
        {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, encoding);
  }
  std::vector<std::uint8_t> fromRoman(std::vector<std::uint8_t> roman, std::size_t capacity) {
    std::vector<std::uint8_t> out(64, 0xEE);
    const std::ptrdiff_t count = encoding_.TECConvertText(roman, out.data(), capacity);
    EXPECT_LE(count, static_cast<std::ptrdiff_t>(capacity));
    EXPECT_EQ(out[capacity], 0xEE) << "written past the capacity";
    out.resize(static_cast<std::size_t>(std::max<std::ptrdiff_t>(count, 0)));
    return out;
  }

  std::unique_ptr<TextEncodingStage> stage_ = GetParam()();
  TextEncoding& encoding_ = stage_->textEncoding();
};

TEST_P(TextEncodingConformance, Utf8IsStrict) {
  using namespace std::string_view_literals;
  constexpr auto utf8 = NSStringEncoding::UTF8;
  EXPECT_EQ(decode("", utf8), u"");
  EXPECT_EQ(decode("d\xC3\xA9j\xC3\xA0 \xF0\x9F\x98\x80"sv, utf8), u"d\u00E9j\u00E0 \U0001F600");
  EXPECT_EQ(decode("a\0b"sv, utf8), std::u16string(u"a\0b", 3));
  for (const auto bad : {"\xC0\x80"sv, "\xED\xA0\x80"sv, "\xF4\x90\x80\x80"sv, "a\xC3"sv, "\x80"sv,
                         "\xFFz"sv, "\xE2\x82"sv}) {
    EXPECT_FALSE(decode(bad, utf8).has_value()) << testing::PrintToString(bad);
  }
}

TEST_P(TextEncodingConformance, AsciiAndUtf16RefuseWhatTheyCannotHold) {
  using namespace std::string_view_literals;
  EXPECT_EQ(decode("it's", NSStringEncoding::ASCII), u"it's");
  EXPECT_FALSE(decode("na\xEFve", NSStringEncoding::ASCII).has_value());
  EXPECT_EQ(decode("A\0\x19\x20"sv, NSStringEncoding::UTF16LittleEndian), u"A\u2019");
  EXPECT_FALSE(decode("A\0B"sv, NSStringEncoding::UTF16LittleEndian).has_value());
}

TEST_P(TextEncodingConformance, RomanBecomesLittleEndianUnitsWithinTheCapacity) {
  using Bytes = std::vector<std::uint8_t>;
  EXPECT_EQ(fromRoman({'a', 0xD5, 0x8E, 0xD0}, 32),
            (Bytes{'a', 0, 0x19, 0x20, 0xE9, 0, 0x13, 0x20}));
  EXPECT_EQ(fromRoman({'a', 'b', 'c'}, 5), (Bytes{'a', 0, 'b', 0}));
  EXPECT_EQ(fromRoman({'a'}, 1), Bytes{});
  EXPECT_EQ(fromRoman({}, 8), Bytes{});
}

}  // namespace quorvane::conformance
