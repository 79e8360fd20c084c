#include "tools/word_data/Inflection.h"

#include <string>

namespace quorvane::word_data {
namespace {

struct Rule {
  Part part;
  std::string_view ending;
  std::string_view replacement;
};

constexpr std::array<Rule, 20> Rules{
    {{Part::Noun, "s", ""},         {Part::Noun, "ses", "s"},     {Part::Noun, "xes", "x"},
     {Part::Noun, "zes", "z"},      {Part::Noun, "ches", "ch"},   {Part::Noun, "shes", "sh"},
     {Part::Noun, "men", "man"},    {Part::Noun, "ies", "y"},     {Part::Verb, "s", ""},
     {Part::Verb, "ies", "y"},      {Part::Verb, "es", ""},       {Part::Verb, "ied", "y"},
     {Part::Verb, "ed", "e"},       {Part::Verb, "ed", ""},       {Part::Verb, "ing", "e"},
     {Part::Verb, "ing", ""},       {Part::Adjective, "er", "e"}, {Part::Adjective, "er", ""},
     {Part::Adjective, "est", "e"}, {Part::Adjective, "est", ""}}};
constexpr std::size_t ShortestBase = 2;

bool endsDoubled(std::string_view base) {
  const std::size_t size = base.size();
  return size > ShortestBase && base[size - 1] == base[size - 2];
}

}  // namespace

std::vector<BaseForm> regularBases(std::string_view word) {
  std::vector<BaseForm> bases;
  for (const Rule& rule : Rules) {
    if (!word.ends_with(rule.ending)) continue;
    std::string base(word.substr(0, word.size() - rule.ending.size()));
    base += rule.replacement;
    if (base.size() < ShortestBase) continue;
    bases.push_back({rule.part, base});
    if (rule.replacement.empty() && rule.ending != "s" && endsDoubled(base))
      bases.push_back({rule.part, base.substr(0, base.size() - 1)});
  }
  return bases;
}

}  // namespace quorvane::word_data
