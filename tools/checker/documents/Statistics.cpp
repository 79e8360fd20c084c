#include "tools/checker/documents/Statistics.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "tools/checker/documents/DocumentText.h"

namespace quorvane::checker {

namespace {

constexpr std::size_t kNumberColumns = 6;
constexpr char16_t kBar = u'\u2588';

char16_t small(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}
bool isIn(std::u16string_view set, char16_t unit) {
  return set.find(unit) != std::u16string_view::npos;
}
bool isWhiteUnit(char16_t unit) { return isIn(u" \t\n\r\u00A0", unit); }
/// Letters beyond ASCII too; general punctuation, symbols and what takes two units, such as
/// pictures, aren't.
bool isWordUnit(char16_t unit) {
  const char16_t letter = small(unit);
  const bool isMark = (unit >= 0x2000 && unit <= 0x206F) || (unit >= 0x2190 && unit <= 0x2BFF) ||
                      (unit >= 0xD800 && unit <= 0xDFFF);
  return (letter >= u'a' && letter <= u'z') || (unit >= u'0' && unit <= u'9') ||
         (unit >= 0xC0 && !isMark);
}
bool joinsUnits(char16_t unit) { return isIn(u"'\u2019-.", unit); }
bool isVowel(char16_t unit) { return isIn(u"aeiouy", small(unit)); }

std::size_t wordLength(std::u16string_view text) {
  std::size_t length = 0;
  while (length < text.size() &&
         (isWordUnit(text[length]) ||
          (joinsUnits(text[length]) && length > 0 && length + 1 < text.size() &&
           isWordUnit(text[length - 1]) && isWordUnit(text[length + 1])))) {
    ++length;
  }
  return length;
}

bool endsSentence(std::u16string_view text) {
  constexpr std::size_t kMostMarks = 16;  // a run of thousands isn't looked through from each
  if (text.front() == u'\n') return text.starts_with(u"\n\n") || text.starts_with(u"\n\r\n");
  if (!isIn(u".?!\u2026", text.front())) return false;
  if (text.size() > kMostMarks) text = text.substr(0, kMostMarks + 1);
  text.remove_prefix(std::min(text.find_first_not_of(u".?!\u2026\"')]\u2019\u201D"), text.size()));
  return text.empty() || isWhiteUnit(text.front());
}

std::u16string tenths(double number) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.1f", number);
  return widenedAscii(text.data());
}
std::u16string whole(std::size_t number) { return widenedAscii(std::to_string(number)); }

double share(std::size_t part, std::size_t all) {
  return all == 0 ? 0 : static_cast<double>(part) / static_cast<double>(all);
}

struct Ease {
  double least;
  const char16_t* name;
};
/// Flesch's own names.
constexpr std::array<Ease, 7> kEases{{{90, u"very easy"},
                                      {80, u"easy"},
                                      {70, u"fairly easy"},
                                      {60, u"standard"},
                                      {50, u"fairly difficult"},
                                      {30, u"difficult"},
                                      {-1e9, u"very difficult"}}};

std::u16string easeLine(const Statistics& statistics) {
  const double ease = readingEase(statistics);
  const auto* const name =
      std::ranges::find_if(kEases, [ease](const Ease& each) { return ease >= each.least; });
  return tenths(ease) + u", " + name->name;
}

std::u16string row(std::u16string name, const std::u16string& value) {
  name.resize(26, u' ');
  return name + value;
}

}  // namespace

std::size_t syllablesIn(std::u16string_view word) {
  std::size_t groups = 0;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (isVowel(word[i]) && (i == 0 || !isVowel(word[i - 1]))) ++groups;
  }
  const std::size_t size = word.size();
  const auto fromEnd = [&](std::size_t place) {
    return size >= place ? small(word[size - place]) : u' ';
  };
  // An e at the end is silent, but in "le" behind a consonant; so is that of "ed", but in "ted".
  const bool silentE = fromEnd(1) == u'e' && !isVowel(fromEnd(2)) &&
                       !(fromEnd(2) == u'l' && size > 2 && !isVowel(fromEnd(3)));
  const bool silentEd = fromEnd(1) == u'd' && fromEnd(2) == u'e' && size > 3 &&
                        !isVowel(fromEnd(3)) && !isIn(u"td", fromEnd(3));
  if (groups > 1 && (silentE || silentEd)) --groups;
  return std::max<std::size_t>(groups, 1);
}

Statistics statisticsOf(std::u16string_view text) {
  Statistics statistics;
  std::size_t words = 0;
  const auto close = [&] {
    if (words > 0) statistics.sentences.push_back(words);
    words = 0;
  };
  while (!text.empty()) {
    const std::size_t length = wordLength(text);
    if (length > 0) {
      const auto word = text.substr(0, length);
      ++words;
      ++statistics.words;
      statistics.syllables += syllablesIn(word);
      statistics.characters += static_cast<std::size_t>(std::ranges::count_if(word, isWordUnit));
    } else if (endsSentence(text)) {
      close();
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  close();
  return statistics;
}

double readingEase(const Statistics& statistics) {
  if (statistics.words == 0) return 0;
  return 206.835 - 1.015 * share(statistics.words, statistics.sentences.size()) -
         84.6 * share(statistics.syllables, statistics.words);
}

std::vector<std::u16string> describeStatistics(const Statistics& statistics) {
  const auto longest = std::ranges::max_element(statistics.sentences);
  return {row(u"Words", whole(statistics.words)),
          row(u"Sentences", whole(statistics.sentences.size())),
          row(u"Words a sentence", tenths(share(statistics.words, statistics.sentences.size()))),
          row(u"Longest sentence",
              whole(longest == statistics.sentences.end() ? 0 : *longest) + u" words"),
          row(u"Letters a word", tenths(share(statistics.characters, statistics.words))),
          row(u"Syllables a word", tenths(share(statistics.syllables, statistics.words))),
          row(u"Reading ease", easeLine(statistics)),
          u"",
          u"Reading ease is that of Flesch (1948): 206.835 less 1.015",
          u"times the words a sentence and 84.6 times the syllables a word.",
          u"Syllables are guessed by the spelling."};
}

std::vector<std::u16string> drawSentenceLengths(const Statistics& statistics, std::size_t columns) {
  std::vector<std::u16string> lines;
  const auto longest = std::ranges::max_element(statistics.sentences);
  if (longest == statistics.sentences.end()) return {u"There are no sentences."};
  const std::size_t room = columns - kNumberColumns;
  const std::size_t scale = std::max(*longest, room);
  for (const std::size_t words : statistics.sentences) {
    std::u16string number = whole(words);
    number.insert(0, kNumberColumns - 1 - std::min(number.size(), kNumberColumns - 1), u' ');
    lines.push_back(number + u' ' +
                    std::u16string(std::max<std::size_t>(words * room / scale, 1), kBar));
  }
  return lines;
}

}  // namespace quorvane::checker
