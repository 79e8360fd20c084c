// The text field: what client calls and passed keys do at the edges.

#include "hosts/field/Document.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace quorvane::field {
namespace {

constexpr NSRange kHere{NSNotFound, NSNotFound};
constexpr std::uint64_t kWrapped = std::uint64_t{0} - 3;  ///< location 2 minus a count of 5

/// Text with `|` at the caret, or `[` and `]` around the selection; `{` and `}` around marked text.
std::u16string shown(const Document& document) {
  std::u16string result;
  const NSRange selection = document.selection();
  const auto marked = document.markedRange();
  for (std::uint64_t i = 0; i <= document.text().size(); ++i) {
    if (marked && i == marked->location + marked->length) result += u'}';
    if (selection.length > 0 && i == selection.location + selection.length) result += u']';
    if (marked && i == marked->location) result += u'{';
    if (i == selection.location) result += selection.length > 0 ? u'[' : u'|';
    if (i < document.text().size()) result += document.text()[i];
  }
  return result;
}

NSEvent key(std::u16string characters, std::uint32_t flags = 0) {
  return {NSEventType::KeyDown, flags, 0, std::move(characters), nullptr};
}

TEST(Document, InsertTextReplacesRangeMarkedTextOrSelection) {
  Document document;
  document.insertText(u"teh cat", kHere);
  EXPECT_EQ(shown(document), u"teh cat|");
  document.insertText(u"the", {0, 3});
  EXPECT_EQ(shown(document), u"the| cat");
  document.select({4, 3});
  document.insertText(u"dog", kHere);
  EXPECT_EQ(shown(document), u"the dog|");
  document.setMarkedText(u"big dog", {3, 4}, {4, 3});
  EXPECT_EQ(shown(document), u"the {big[ dog}]");
  document.insertText(u"fox", kHere);
  EXPECT_EQ(shown(document), u"the fox|");
  document.setMarkedText(u"x", {0, 0}, {7, 0});
  document.insertText(u"A", {0, 3});
  EXPECT_EQ(shown(document), u"A| foxx") << "inserting elsewhere leaves plain text";
}

TEST(Document, RangesOutsideTheTextChangeNothing) {
  const NSRange outside[] = {
      {8, 0}, {7, 1}, {kWrapped, 5}, {3, ~std::uint64_t{0}}, {NSNotFound + 1, 0}};
  for (const NSRange& range : outside) {
    Document document;
    document.setText(u"the cat");
    document.setMarkedText(u"at", {1, 0}, {5, 2});
    document.insertText(u"XX", range);
    document.setMarkedText(u"YY", {0, 0}, range);
    EXPECT_EQ(shown(document), u"the c{a|t}") << range.location << ' ' << range.length;
    EXPECT_EQ(document.clientChanges(), 1U);
  }
  Document document;
  document.setText(u"the cat");
  document.insertText(u"!", {7, 0});
  EXPECT_EQ(shown(document), u"the cat!|") << "the end is inside";
}

TEST(Document, SelectionInMarkedTextIsClamped) {
  const struct {
    NSRange selection;
    const char16_t* result;
  } cases[] = {
      {{0, 0}, u"I {|the}"}, {{0, 3}, u"I {[the}]"},         {{1, 9}, u"I {t[he}]"},
      {{5, 0}, u"I {the}|"}, {{NSNotFound, 4}, u"I {the}|"}, {{2, ~std::uint64_t{0}}, u"I {th[e}]"},
  };
  for (const auto& each : cases) {
    Document document;
    document.setText(u"I teh");
    document.setMarkedText(u"the", each.selection, {2, 3});
    EXPECT_EQ(shown(document), each.result);
  }
}

TEST(Document, MarkedTextReplacesMarkedTextAndEmptyUnmarks) {
  Document document;
  document.setText(u"a b");
  document.select({1, 1});
  document.setMarkedText(u"one", {3, 0}, kHere);
  EXPECT_EQ(shown(document), u"a{one}|b");
  document.setMarkedText(u"three", {5, 0}, kHere);
  EXPECT_EQ(shown(document), u"a{three}|b");
  document.setMarkedText(u"B", {0, 1}, {6, 1});
  EXPECT_EQ(shown(document), u"athree{[B}]") << "the old marked text stays as plain text";
  document.setMarkedText(u"", {0, 0}, kHere);
  EXPECT_EQ(shown(document), u"athree|");
}

TEST(Document, PassedKeys) {
  const struct {
    const char16_t* name;
    std::u16string before;
    NSRange selection;
    NSEvent event;
    const char16_t* after;
  } cases[] = {
      {u"a character over a selection", u"abc", {1, 1}, key(u"x"), u"ax|c"},
      {u"backspace of a selection", u"abc", {1, 2}, key(u"\b"), u"a|"},
      {u"right of a selection", u"abc", {0, 2}, key(u"\x1D"), u"ab|c"},
      {u"up in the first line", u"ab\nc", {1, 0}, key(u"\x1E"), u"a|b\nc"},
      {u"down in the last line", u"a\nb", {2, 0}, key(u"\x1F"), u"a\n|b"},
      {u"home", u"ab", {2, 0}, key(u"\x1"), u"|ab"},
      {u"end", u"ab", {0, 1}, key(u"\x4"), u"ab|"},
      {u"all", u"ab", {1, 0}, key(u"A", NSEventModifierFlagCommand), u"[ab]"},
      {u"backspace of a pair", u"a\U0001F600b", {3, 0}, key(u"\b"), u"a|b"},
      {u"backspace of half a pair", u"\xDE00", {1, 0}, key(u"\b"), u"|"},
      {u"forward delete at end", u"ab", {2, 0}, key(u"\x7F"), u"ab|"},
      {u"right over a pair", u"\U0001F600a", {0, 0}, key(u"\x1D"), u"\U0001F600|a"},
      {u"left of a selection", u"abc", {1, 2}, key(u"\x1C"), u"a|bc"},
      {u"up to a shorter line", u"a\nbcd", {5, 0}, key(u"\x1E"), u"a|\nbcd"},
      {u"down into a pair", u"ab\n\U0001F600", {1, 0}, key(u"\x1F"), u"ab\n|\U0001F600"},
      {u"page up", u"a\nb", {3, 0}, key(u"\xB"), u"a\nb|"},
      {u"function key", u"ab", {1, 0}, key(u"\xF704"), u"a|b"},
      {u"command-backspace", u"ab", {1, 0}, key(u"\b", NSEventModifierFlagCommand), u"a|b"},
  };
  for (const auto& each : cases) {
    Document document;
    document.setText(each.before);
    document.select(each.selection);
    document.applyKey(each.event);
    EXPECT_EQ(shown(document), each.after) << testing::PrintToString(std::u16string(each.name));
  }
}

TEST(Document, TheClipboardIsCopiedToCutToAndPasted) {
  const auto clipboard = std::make_shared<MemoryClipboard>();
  Document document(clipboard);
  document.setText(u"abc");
  for (const auto& [selection, characters, after] : {std::tuple(NSRange{0, 2}, u"c", u"[ab]c"),
                                                     {NSRange{3, 0}, u"c", u"abc|"},
                                                     {NSRange{3, 0}, u"v", u"abcab|"},
                                                     {NSRange{1, 3}, u"x", u"a|b"},
                                                     {NSRange{0, 1}, u"v", u"bca|b"}}) {
    document.select(selection);
    document.applyKey(key(characters, NSEventModifierFlagCommand));
    EXPECT_EQ(shown(document), after);
  }
}

TEST(Document, ACharacterEndsTheMarkedTextAndNoOtherKeyDoes) {
  const std::pair<const char16_t*, const char16_t*> cases[] = {
      {u"\x1C", u"a{b|c}d"}, {u"x", u"abcx|d"}, {u"\b", u"a{b|c}d"}};
  for (const auto& [characters, after] : cases) {
    Document document;
    document.setText(u"ad");
    document.setMarkedText(u"bc", {1, 0}, {1, 0});
    document.applyKey(key(characters));
    EXPECT_EQ(shown(document), after);
  }
}

TEST(Document, ClosedDocumentDropsEverything) {
  Document document;
  document.setText(u"abc");
  document.close();
  document.insertText(u"x", kHere);
  document.setMarkedText(u"x", {0, 0}, {0, 1});
  document.applyKey(key(u"x"));
  EXPECT_EQ(document.text(), u"abc");
  EXPECT_EQ(document.selectedRange(), (NSRange{NSNotFound, 0}));
  EXPECT_EQ(document.clientChanges(), 0U);
}

}  // namespace
}  // namespace quorvane::field
