// What all hosts share: JSON, scripts, character classes and text encodings.

#include <gtest/gtest.h>

#include "hosts/memory/MemoryHost.h"

namespace quorvane {
namespace {

using namespace std::string_view_literals;

/// Writes down what it is told.
struct NotingHandler : JSONHandler {
  void startObject() override { told += "{ "; }
  void endObject() override { told += "} "; }
  void startArray() override { told += "[ "; }
  void endArray() override { told += "] "; }
  void key(std::string_view text) override { told.append(text).append(": "); }
  void string(std::string_view text) override { told.append("'").append(text).append("' "); }
  void integer(std::int64_t number) override { told += std::to_string(number) + ' '; }
  void real(double number) override { told += "real " + std::to_string(number) + ' '; }
  void boolean(bool value) override { told += value ? "true " : "false "; }
  void null() override { told += "null "; }

  std::string told;
};

struct SharedServices : testing::Test {
  /// What was told, or the error's line and column.
  std::string read(std::string_view json) {
    host.files.put("/file", json);
    NotingHandler handler;
    const auto error = json_.JSONObjectWithStream("/file", handler);
    if (!error) return handler.told;
    EXPECT_EQ(error->kind, JSONError::Kind::Malformed);
    EXPECT_NE(error->message, "");
    return std::to_string(error->line) + ":" + std::to_string(error->column);
  }
  std::u16string valueOf(const std::u16string& script) {
    return scripts_.newContext()->evaluateScript(script)->toString();
  }
  std::optional<std::u16string> decode(std::string_view bytes, NSStringEncoding encoding) {
    return encoding_.initWithData(
        {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, encoding);
  }

  memory::MemoryHost host;
  JSONSerialization& json_ = host.platform().jsonSerialization;
  ScriptHost& scripts_ = host.platform().scriptHost;
  TextEncoding& encoding_ = host.platform().textEncoding;
};

TEST_F(SharedServices, JSONIsToldInOrder) {
  EXPECT_EQ(read(" {\"a\":[{},[],true,false,null],\"a\":\"\\u00e9\\n\"}\n"),
            "{ a: [ { } [ ] true false null ] a: '\xC3\xA9\n' } ");
  EXPECT_EQ(read("\xEF\xBB\xBF[\"a\\u0000b\"]"), "[ 'a\0b' ] "sv);
  EXPECT_EQ(read("[0,-7,-9223372036854775808,9223372036854775808,18446744073709551615]"),
            "[ 0 -7 -9223372036854775808 -9223372036854775808 -1 ] ");
  EXPECT_EQ(read("[1.5,1e2,18446744073709551616]"),
            "[ real 1.500000 real 100.000000 real 18446744073709551616.000000 ] ");
}

TEST_F(SharedServices, JSONSaysWhereItIsWrong) {
  const std::pair<std::string_view, const char*> rows[] = {
      {"", "1:1"},
      {"{\"a\":1}x", "1:8"},
      {"{\"a\":1,\n \"b\":2\n", "2:6"},       // a brace is missing
      {"{\n\"a\":1\n\"b\":2}", "3:1"},        // a comma
      {"{\n\"a\":1,\n}", "3:1"},              // or one too many
      {"{\n\"a\":\"b,\n\"c\":1}", "2:8"},     // a quotation mark, with the line's end
      {"{\n \"a\":\"b}", "2:6"},              // or with the text's
      {"[\"a\\\"b\n\"]", "1:7"},              // or after one that belongs to the text
      {"\xEF\xBB\xBF[\"a\tb\"]", "1:4"},      // a control character
      {"[\"\xC3\xA9\",\n\"a\xFF\"]", "2:3"},  // no UTF-8
      {"[1,\n\"\\ud800\"]", "2:1"},
      {"[01]", "1:2"},
      {"[\n tru]", "2:2"},
      {"[1}", "1:3"},
  };
  for (const auto& [json, place] : rows) {
    EXPECT_EQ(read(json), place) << json;
  }
  NotingHandler handler;
  const auto error = json_.JSONObjectWithStream("/missing", handler);
  EXPECT_EQ(error.value().kind, JSONError::Kind::Missing);
}

TEST_F(SharedServices, JSONNestsToALimit) {
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
  };
  EXPECT_EQ(read(nested(1024)).size(), 4096U);
  EXPECT_EQ(read(nested(1025)), "1:1025");
  EXPECT_EQ(read(std::string(1'000'000, '[')), "1:1000000");
}

TEST_F(SharedServices, AScriptComputesAndDoesNothingElse) {
  const std::pair<const char16_t*, std::u16string> rows[] = {
      {u"1 + 1", u"2"},
      {u"'\U0001F600'.length + '\U0001F600\u00E9'", u"2\U0001F600\u00E9"},
      {u"'\\ud83d'", {0xD83D}},
      {u"'a\\u0000b'", {u'a', 0, u'b'}},
      {u"null", u"null"},
      {u"throw 'x'", u"undefined"},
      {u"({toString: function() { throw 1; }})", u"undefined"},
      {u"(function f() { f(); })()", u"undefined"},
      {u"JSON.parse(new Array(100000).join('['))", u"undefined"},
      {u"/(?:a|b)*c/.test(new Array(100000).join('ab'))", u"undefined"},
      {u"new TextDecoder().decode(new Uint8Array([0xFF, 65]))", u"\uFFFDA"},
      {u"CBOR.decode(new Uint8Array([0x67, 0xC3, 65, 0xF0, 0x9F, 0x98, 0x80, 0xE2]))",
       u"\uFFFDA\U0001F600\uFFFD"},
      {u"[typeof Date, typeof Duktape, typeof performance].join()",
       u"undefined,undefined,undefined"},
  };
  for (const auto& [script, value] : rows) EXPECT_EQ(valueOf(script), value);
}

TEST_F(SharedServices, AFunctionOutlivesItsContextAndItsFailures) {
  auto context = scripts_.newContext();
  context->evaluateScript(
      u"function twice(a, b) { if (a == 'no') throw a; return a + a + b; }"
      u"var n = 0;"
      u"function large() { for (var s = ++n, i = 0; i < 19; ++i) s += '' + s; return s; }");
  const auto large = context->objectForKeyedSubscript("large");
  const auto function = context->objectForKeyedSubscript("twice");
  const auto none = context->objectForKeyedSubscript("thrice");
  context.reset();
  const auto call = [&](std::vector<std::u16string> arguments) {
    return function->callWithArguments(arguments)->toString();
  };
  EXPECT_EQ(call({u"\u00FC", u"b"}), u"\u00FC\u00FCb");
  EXPECT_EQ(call({u"no", u"b"}), u"undefined");
  EXPECT_EQ(call({u"a"}), u"aaundefined");
  EXPECT_EQ(none->callWithArguments({})->toString(), u"undefined");
  for (int i = 0; i < 60; ++i) large->callWithArguments({});
  EXPECT_EQ(call({u"a", u"b"}), u"aab") << "values that are gone take no room";
}

TEST_F(SharedServices, AScriptThatAsksForTooMuchIsBroken) {
  for (const char16_t* const greedy :
       {u"for (;;);", u"({toString: function() { for (;;) [].concat([1]); }})",
        u"try { var s = 'x'; for (;;) s += s; } catch (e) { 'went on' }",
        u"var a = []; for (;;) a.push({})"}) {
    const auto context = scripts_.newContext();
    const auto before = context->evaluateScript(u"'before'");
    EXPECT_EQ(context->evaluateScript(greedy)->toString(), u"undefined");
    EXPECT_EQ(before->toString(), u"undefined");
    EXPECT_EQ(context->evaluateScript(u"1")->toString(), u"undefined");
  }
  EXPECT_EQ(valueOf(u"1"), u"1");
}

TEST_F(SharedServices, CharactersAreClassedAndLowered) {
  CharacterSets& sets = host.platform().characterSets;
  const auto classes = [&](char16_t character) {
    return std::string(sets.decimalDigitCharacterSet(character) ? "d" : "") +
           (sets.punctuationCharacterSet(character) ? "p" : "") +
           (sets.symbolCharacterSet(character) ? "s" : "");
  };
  for (const char16_t digit : u"09\u0663") EXPECT_EQ(classes(digit), digit != 0 ? "d" : "");
  for (const char16_t mark : std::u16string_view(u".,'-_(\u2019\u00BF\u3002")) {
    EXPECT_EQ(classes(mark), "p");
  }
  for (const char16_t symbol : std::u16string_view(u"+<$^`~|\u20AC\u00A9")) {
    EXPECT_EQ(classes(symbol), "s");
  }
  for (const char16_t other : std::u16string_view(u"aZ \n\u00B2\u00E9\u4E00")) {
    EXPECT_EQ(classes(other), "");
  }
  EXPECT_EQ(classes(0xD83D), "");
  EXPECT_EQ(sets.lowercaseString(u"Hello I@[`{Z"), u"hello i@[`{z");
  EXPECT_EQ(sets.lowercaseString(u"\u00C9\u0130\U00010400"), u"\u00E9i\u0307\U00010428");
  EXPECT_EQ(sets.lowercaseString(std::u16string(50, u'\u0130')).size(), 100U);
  EXPECT_EQ(sets.lowercaseString({}), u"");
}

TEST_F(SharedServices, EncodingsAreStrict) {
  constexpr auto utf8 = NSStringEncoding::UTF8;
  constexpr auto ascii = NSStringEncoding::ASCII;
  constexpr auto utf16 = NSStringEncoding::UTF16LittleEndian;
  EXPECT_EQ(decode("", utf8), u"");
  EXPECT_EQ(decode("d\xC3\xA9j\xC3\xA0 \xF0\x9F\x98\x80", utf8), u"d\u00E9j\u00E0 \U0001F600");
  EXPECT_EQ(decode("a\0b"sv, utf8), std::u16string(u"a\0b", 3));
  for (const auto bad :
       {"\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "a\xC3", "\x80", "\xFFz", "\xE2\x82"}) {
    EXPECT_FALSE(decode(bad, utf8)) << testing::PrintToString(bad);
  }
  EXPECT_EQ(decode("it's", ascii), u"it's");
  EXPECT_FALSE(decode("na\xEFve", ascii));
  EXPECT_EQ(decode("A\0\x19\x20"sv, utf16), u"A\u2019");
  EXPECT_FALSE(decode("A\0B"sv, utf16));
}

TEST_F(SharedServices, RomanBecomesLittleEndianUnitsWithinTheCapacity) {
  using Roman = std::vector<std::uint8_t>;
  const auto fromRoman = [this](const Roman& roman, std::size_t capacity) {
    Roman out(64, 0xEE);
    const std::ptrdiff_t count = encoding_.TECConvertText(roman, out.data(), capacity);
    EXPECT_EQ(out[capacity], 0xEE) << "written past the capacity";
    return Roman(out.begin(), out.begin() + std::clamp<std::ptrdiff_t>(count, 0, 64));
  };
  EXPECT_EQ(fromRoman({'a', 0xD5, 0x8E, 0xD0}, 32),
            (Roman{'a', 0, 0x19, 0x20, 0xE9, 0, 0x13, 0x20}));
  EXPECT_EQ(fromRoman({'a', 'b', 'c'}, 5), (Roman{'a', 0, 'b', 0}));
  EXPECT_EQ(fromRoman({'a'}, 1), Roman{});
  EXPECT_EQ(fromRoman({}, 8), Roman{});
}

}  // namespace
}  // namespace quorvane
