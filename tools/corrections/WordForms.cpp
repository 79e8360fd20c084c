#include "tools/corrections/WordForms.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace quorvane::corrections {

namespace {

constexpr std::array<std::string_view, 42> kPrefixes{
    "un",    "re",    "non",   "pre",  "sub",   "multi",  "super", "inter",   "over",
    "under", "auto",  "anti",  "co",   "de",    "dis",    "mis",   "out",     "up",
    "down",  "micro", "meta",  "mini", "hyper", "pseudo", "semi",  "post",    "bi",
    "tri",   "proto", "ex",    "neo",  "mid",   "poly",   "quasi", "counter", "trans",
    "ultra", "intra", "extra", "fore", "self",  "mono"};
constexpr std::array<std::string_view, 58> kEndings{
    "s",    "es",    "ed",     "d",       "ing",     "er",      "ers",   "r",     "rs",   "ly",
    "ness", "less",  "able",   "ally",    "al",      "y",       "ize",   "izes",  "ized", "izing",
    "ise",  "ises",  "ised",   "ising",   "ish",     "ist",     "ists",  "ism",   "like", "wise",
    "ful",  "fully", "ings",   "eth",     "est",     "ian",     "ians",  "ative", "or",   "ors",
    "ic",   "ical",  "ically", "ability", "ization", "isation", "n't",   "'ll",   "'ve",  "'d",
    "'s",   "'re",   "ship",   "hood",    "dom",     "ment",    "ments", "ible"};

/// Of nouns and verbs.
constexpr std::array<std::string_view, 10> kInflections{"",   "s",  "d",   "r",  "ed",
                                                        "er", "es", "ing", "rs", "ers"};
constexpr std::array<std::string_view, 5> kRegularEndings{"s", "ed", "ing", "er", "ers"};
constexpr std::size_t kShortestStem = 4;

constexpr float kAttested = 2.2F;
constexpr float kCommon = 5.7F;
constexpr float kVeryCommon = 6.9F;

constexpr std::size_t kShortestBase = 3;
constexpr std::size_t kShortestPart = 3;
constexpr std::size_t kLongerPart = 4;

bool isAtLeast(const WordIndex& index, std::string_view word, float logFrequency) {
  const auto found = index.logFrequency(word);
  return found && *found >= logFrequency;
}

bool isPrefixed(const WordIndex& index, std::string_view word) {
  return std::ranges::any_of(kPrefixes, [&](std::string_view prefix) {
    return word.starts_with(prefix) && word.size() >= prefix.size() + kLongerPart &&
           isAtLeast(index, word.substr(prefix.size()), kCommon);
  });
}

/// Short parts are to be very common: nearly any letters can be cut into rare words of three.
bool isCompound(const WordIndex& index, std::string_view word, std::size_t shortest) {
  for (std::size_t cut = shortest; cut + shortest <= word.size(); ++cut) {
    const bool longer = cut >= kLongerPart && cut + kLongerPart <= word.size();
    const float common = longer ? kCommon : kVeryCommon;
    if (isAtLeast(index, word.substr(0, cut), common) &&
        isAtLeast(index, word.substr(cut), common)) {
      return true;
    }
  }
  return false;
}

bool isBase(const WordIndex& index, std::string_view stem) {
  if (stem.size() < kShortestBase) return false;
  std::string base(stem);
  if (isKnown(index, base) || isKnown(index, base + 'e')) return true;
  if (base.back() != 'i') return false;
  base.back() = 'y';
  return isKnown(index, base);
}

bool isInflected(const WordIndex& index, std::string_view word, std::string_view candidate) {
  bool inflected = false;
  for (const std::string_view ending : kEndings) {
    if (!word.ends_with(ending)) continue;
    const std::string_view stem = word.substr(0, word.size() - ending.size());
    if (!isBase(index, stem)) continue;
    if (candidate.ends_with(ending) && candidate.starts_with(stem.substr(0, stem.size() - 1))) {
      return false;
    }
    inflected = true;
  }
  return inflected;
}

/// Takes "es" in place of "s".
bool hisses(std::string_view stem) {
  constexpr std::string_view kHissing = "hsxz";
  return stem.empty() || kHissing.find(stem.back()) != std::string_view::npos;
}

bool isInflection(std::string_view ending) {
  return std::ranges::find(kInflections, ending) != kInflections.end();
}

std::size_t sharedLetters(std::string_view one, std::string_view other) {
  const auto end = std::ranges::mismatch(one, other).in1;
  return static_cast<std::size_t>(end - one.begin());
}

}  // namespace

bool isKnown(const WordIndex& index, std::string_view word) {
  const auto found = index.logFrequency(word);
  return found && (*found == 0 || *found > kAttested);
}

bool isMadeOfKnown(const WordIndex& index, std::string_view word, std::string_view candidate) {
  return isInflected(index, word, candidate) || isPrefixed(index, word) ||
         isCompound(index, word, kShortestPart);
}

bool isWholeWord(const WordIndex& index, std::string_view word) {
  return isInflected(index, word, {}) || isPrefixed(index, word) ||
         isCompound(index, word, kLongerPart);
}

bool isRegularForm(const WordIndex& index, std::string_view word) {
  const auto isVeryCommon = [&index](const std::string& base) {
    return base.size() >= kShortestStem && isAtLeast(index, base, kVeryCommon);
  };
  for (const std::string_view ending : kRegularEndings) {
    if (!word.ends_with(ending)) continue;
    const std::string stem(word.substr(0, word.size() - ending.size()));
    const bool takesIt = ending == "s" ? !hisses(stem) : !stem.ends_with('e');
    if (takesIt && isVeryCommon(stem)) return true;
    if (ending != "s" && isVeryCommon(stem + 'e')) return true;
  }
  return false;
}

/// The last shared letter may be the e of one ending.
bool differInEnding(std::string_view one, std::string_view other) {
  const std::size_t shared = sharedLetters(one, other);
  for (std::size_t stem = shared; stem + 1 >= shared && stem >= kShortestStem; --stem) {
    if (isInflection(one.substr(stem)) && isInflection(other.substr(stem))) return true;
  }
  return false;
}

bool differInSpelling(std::string_view one, std::string_view other) {
  const auto same = [](char a, char b) { return a == b || (a == 's' && b == 'z'); };
  return std::ranges::equal(one, other, same) || std::ranges::equal(other, one, same);
}

bool endsForeign(std::string_view word, std::string_view candidate) {
  constexpr std::size_t kEnd = 3;
  const auto withoutS = [](std::string_view text) {
    return text.ends_with('s') ? text.substr(0, text.size() - 1) : text;
  };
  const std::string_view stem = withoutS(word);
  const std::string_view other = withoutS(candidate);
  if (stem.empty() || std::string_view("aio").find(stem.back()) == std::string_view::npos) {
    return false;
  }
  return other.substr(other.size() - std::min(kEnd, other.size())).find(stem.back()) ==
         std::string_view::npos;
}

}  // namespace quorvane::corrections
