#include "tools/word_data/Phones.h"

#include <algorithm>
#include <array>

namespace quorvane::word_data {
namespace {

struct Vowel {
  std::string_view name;
  std::string_view unstressed;
  std::string_view stressed;
};
constexpr std::array<Vowel, 15> Vowels{{{"AA", "ɑː", "ɑː"},
                                        {"AE", "æ", "æ"},
                                        {"AH", "ə", "ʌ"},
                                        {"AO", "ɔː", "ɔː"},
                                        {"AW", "aʊ", "aʊ"},
                                        {"AY", "aɪ", "aɪ"},
                                        {"EH", "ɛ", "ɛ"},
                                        {"ER", "ər", "ɜːr"},
                                        {"EY", "eɪ", "eɪ"},
                                        {"IH", "ɪ", "ɪ"},
                                        {"IY", "i", "iː"},
                                        {"OW", "oʊ", "oʊ"},
                                        {"OY", "ɔɪ", "ɔɪ"},
                                        {"UH", "ʊ", "ʊ"},
                                        {"UW", "uː", "uː"}}};

struct Consonant {
  std::string_view name;
  std::string_view ipa;
};
constexpr std::array<Consonant, 24> Consonants{
    {{"B", "b"},  {"CH", "tʃ"}, {"D", "d"}, {"DH", "ð"}, {"F", "f"},  {"G", "ɡ"},
     {"HH", "h"}, {"JH", "dʒ"}, {"K", "k"}, {"L", "l"},  {"M", "m"},  {"N", "n"},
     {"NG", "ŋ"}, {"P", "p"},   {"R", "r"}, {"S", "s"},  {"SH", "ʃ"}, {"T", "t"},
     {"TH", "θ"}, {"V", "v"},   {"W", "w"}, {"Y", "j"},  {"Z", "z"},  {"ZH", "ʒ"}}};

constexpr std::array<std::string_view, 60> Clusters{
    "pl",  "pr",  "pj",  "bl", "br", "bj", "tr",  "tw",  "tj",  "dr",  "dw",  "dj",
    "kl",  "kr",  "kw",  "kj", "ɡl", "ɡr", "ɡw",  "ɡj",  "fl",  "fr",  "fj",  "vj",
    "θr",  "θw",  "θj",  "ʃr", "hj", "hw", "mj",  "nj",  "lj",  "sp",  "st",  "sk",
    "sm",  "sn",  "sl",  "sf", "sw", "sj", "spl", "spr", "spj", "str", "stj", "skl",
    "skr", "skw", "skj", "vw", "ʃl", "ʃm", "ʃn",  "ʃw",  "pw",  "bw",  "mw",  "zj"};

std::optional<Stress> stressOf(char digit) {
  switch (digit) {
    case '0':
      return Stress::None;
    case '1':
      return Stress::Primary;
    case '2':
      return Stress::Secondary;
    default:
      return {};
  }
}

std::optional<Phone> vowelNamed(std::string_view name) {
  const auto stress = stressOf(name.back());
  const auto vowel = std::ranges::find(Vowels, name.substr(0, name.size() - 1), &Vowel::name);
  if (!stress || vowel == Vowels.end()) return {};
  return Phone{*stress == Stress::None ? vowel->unstressed : vowel->stressed, true, *stress};
}

}  // namespace

std::optional<Phone> phoneNamed(std::string_view name) {
  if (name.empty()) return {};
  const auto consonant = std::ranges::find(Consonants, name, &Consonant::name);
  if (consonant != Consonants.end()) return Phone{consonant->ipa};
  return vowelNamed(name);
}

bool isOnset(std::string_view consonants) {
  if (consonants.empty()) return true;
  if (consonants == "ŋ") return false;
  return std::ranges::find(Consonants, consonants, &Consonant::ipa) != Consonants.end() ||
         std::ranges::find(Clusters, consonants) != Clusters.end();
}

}  // namespace quorvane::word_data
