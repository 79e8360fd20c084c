#pragma once
// What every host's files, JSON, scripts and character classes must do. Instantiate
// ServicesConformance with a factory.

#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "platform/Platform.h"

namespace quorvane::conformance {

struct ServicesStage {
  virtual ~ServicesStage() = default;
  virtual Platform platform() = 0;
  /// Where files may be written; need not exist.
  virtual std::string folder() = 0;
};

using ServicesFactory = std::unique_ptr<ServicesStage> (*)();

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

class ServicesConformance : public testing::TestWithParam<ServicesFactory> {
 protected:
  bool write(const std::string& path, std::string_view content) {
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
    const std::array<std::span<const std::uint8_t>, 2> parts{bytes.first(bytes.size() / 2),
                                                             bytes.subspan(bytes.size() / 2)};
    return files_.writeToFile(path, parts);
  }
  /// "none" for null.
  static std::string textOf(const std::unique_ptr<FileData>& data) {
    if (data == nullptr) return "none";
    return {data->bytes().begin(), data->bytes().end()};
  }
  /// What was told, or the error as kind, line and column.
  std::string read(std::string_view json) {
    write(file_, json);
    NotingHandler handler;
    const auto error = platform_.jsonSerialization.JSONObjectWithStream(file_, handler);
    if (!error) return handler.told;
    EXPECT_NE(error->message, "");
    return (error->kind == JSONError::Kind::Malformed ? "malformed " : "other ") +
           std::to_string(error->line) + ":" + std::to_string(error->column);
  }
  std::u16string valueOf(const std::u16string& script) {
    return platform_.scriptHost.newContext()->evaluateScript(script)->toString();
  }

  std::unique_ptr<ServicesStage> stage_ = GetParam()();
  Platform platform_ = stage_->platform();
  FileManager& files_ = platform_.fileManager;
  const std::string file_ = stage_->folder() + "/new folder/file";
};

TEST_P(ServicesConformance, AFileIsReplacedAsAWholeAndEachChangeShows) {
  EXPECT_FALSE(files_.attributesOfItemAtPath(file_).has_value());
  EXPECT_EQ(textOf(files_.dataWithContentsOfFile(file_)), "none");
  EXPECT_EQ(textOf(files_.dataWithContentsOfMappedFile(file_)), "none");
  EXPECT_FALSE(files_.stringWithContentsOfFile(file_).has_value());
  const std::string first(10'000, 'x');
  ASSERT_TRUE(write(file_, first));
  const auto attributes = files_.attributesOfItemAtPath(file_);
  ASSERT_TRUE(attributes.has_value());
  EXPECT_EQ(attributes->size, 10'000U);
  EXPECT_EQ(files_.attributesOfItemAtPath(file_), attributes);
  const auto read = files_.dataWithContentsOfFile(file_);
  const auto mapped = files_.dataWithContentsOfMappedFile(file_);
  ASSERT_TRUE(write(file_, "d\xC3\xA9j\xC3\xA0"));
  EXPECT_EQ(files_.stringWithContentsOfFile(file_), u"d\u00E9j\u00E0");
  EXPECT_EQ(textOf(read), first);
  EXPECT_EQ(textOf(mapped), first);
  ASSERT_TRUE(write(file_, first));
  EXPECT_NE(files_.attributesOfItemAtPath(file_), attributes);
  ASSERT_TRUE(write(file_, ""));
  EXPECT_EQ(textOf(files_.dataWithContentsOfFile(file_)), "");
  EXPECT_EQ(textOf(files_.dataWithContentsOfMappedFile(file_)), "");
  ASSERT_TRUE(write(file_, "\xC3"));
  EXPECT_FALSE(files_.stringWithContentsOfFile(file_).has_value());
}

TEST_P(ServicesConformance, JSONIsToldInOrder) {
  using namespace std::string_view_literals;
  EXPECT_EQ(read(" {\"a\":[{},[],true,false,null],\"a\":\"\\u00e9\\n\"}\n"),
            "{ a: [ { } [ ] true false null ] a: '\xC3\xA9\n' } ");
  EXPECT_EQ(read("\xEF\xBB\xBF[\"a\\u0000b\"]"), "[ 'a\0b' ] "sv);
  EXPECT_EQ(read("[0,-7,-9223372036854775808,9223372036854775808,18446744073709551615]"),
            "[ 0 -7 -9223372036854775808 -9223372036854775808 -1 ] ");
  EXPECT_EQ(read("[1.5,1e2,18446744073709551616]"),
            "[ real 1.500000 real 100.000000 real 18446744073709551616.000000 ] ");
}

TEST_P(ServicesConformance, JSONSaysWhereItIsWrong) {
  const std::pair<std::string_view, const char*> rows[] = {
      {"", "1:1"},
      {"1", "1:1"},
      {"{\"a\":1}x", "1:8"},
      {"[1],[2]", "1:4"},
      {"{\"a\":1,\n \"b\":2\n", "2:6"},       // a brace is missing
      {"{\n\"a\":1\n\"b\":2}", "3:1"},        // a comma
      {"{\n\"a\":1,\n}", "3:1"},              // or one too many
      {"{\n\"a\":\"b,\n\"c\":1}", "2:8"},     // a quotation mark, with the line's end
      {"{\n \"a\":\"b}", "2:6"},              // or with the text's
      {"[\"a\\\"b\n\"]", "1:7"},              // or after one that belongs to the text
      {"\xEF\xBB\xBF[\"a\tb\"]", "1:4"},      // a control character
      {"[\"\xC3\xA9\",\n\"a\xFF\"]", "2:3"},  // no UTF-8
      {"\xFF\xFE{\0}\0", "1:1"},
      {"[1,\n\"\\ud800\"]", "2:1"},
      {"{\"\\q\":1}", "1:2"},
      {"{a:1}", "1:2"},
      {"[01]", "1:2"},
      {"[\n tru]", "2:2"},
      {"[nulL]", "1:2"},
      {"[1}", "1:3"},
  };
  for (const auto& [json, place] : rows) {
    EXPECT_EQ(read(json), std::string("malformed ") + place) << json;
  }
  NotingHandler handler;
  const auto error = platform_.jsonSerialization.JSONObjectWithStream(file_ + "x", handler);
  EXPECT_EQ(error.value().kind, JSONError::Kind::Missing);
}

TEST_P(ServicesConformance, JSONNestsToALimit) {
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
  };
  EXPECT_EQ(read(nested(1024)).size(), 4096U);
  EXPECT_EQ(read(nested(1025)), "malformed 1:1025");
  EXPECT_EQ(read(std::string(1'000'000, '[')), "malformed 1:1000000");
}

TEST_P(ServicesConformance, AScriptComputesAndDoesNothingElse) {
  const std::pair<const char16_t*, std::u16string> rows[] = {
      {u"1 + 1", u"2"},
      {u"'\U0001F600'.length + '\U0001F600\u00E9'", u"2\U0001F600\u00E9"},
      {u"'\\ud83d'", {0xD83D}},
      {u"'a\\u0000b'", {u'a', 0, u'b'}},
      {u"null", u"null"},
      {u"(((", u"undefined"},
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

TEST_P(ServicesConformance, AFunctionOutlivesItsContextAndItsFailures) {
  auto context = platform_.scriptHost.newContext();
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

TEST_P(ServicesConformance, AScriptThatAsksForTooMuchIsBroken) {
  for (const char16_t* const greedy :
       {u"for (;;);", u"({toString: function() { for (;;) [].concat([1]); }})",
        u"try { var s = 'x'; for (;;) s += s; } catch (e) { 'went on' }",
        u"var a = []; for (;;) a.push({})"}) {
    const auto context = platform_.scriptHost.newContext();
    const auto before = context->evaluateScript(u"'before'");
    EXPECT_EQ(context->evaluateScript(greedy)->toString(), u"undefined");
    EXPECT_EQ(before->toString(), u"undefined");
    EXPECT_EQ(context->evaluateScript(u"1")->toString(), u"undefined");
  }
  EXPECT_EQ(valueOf(u"1"), u"1");
}

TEST_P(ServicesConformance, CharactersAreClassedAndLowered) {
  CharacterSets& sets = platform_.characterSets;
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

}  // namespace quorvane::conformance
