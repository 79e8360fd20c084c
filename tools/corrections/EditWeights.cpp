#include "tools/corrections/EditWeights.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <sstream>

namespace quorvane::corrections {

namespace {

std::optional<Letter> letterNamed(const std::string& name) {
  if (name == "^") return kEdge;
  if (name.size() != 1 || !isWordCharacter(name.front())) return std::nullopt;
  return letterOf(name.front());
}

struct Reader {
  EditWeights weights;
  std::map<std::string, Cost*> general;

  Reader() {
    general = {{"near change", &weights.nearChange},
               {"near extra", &weights.nearExtra},
               {"first change", &weights.firstChange},
               {"first swap", &weights.firstSwap}};
  }

  bool line(const std::string& text) {
    if (text.empty() || text.front() == '#') return true;
    std::istringstream words(text);
    std::string kind;
    std::string name;
    words >> kind >> name;
    const auto slip = std::ranges::find(kSlipNames, kind);
    if (slip != kSlipNames.end()) {
      return pair(weights.pairs[static_cast<std::size_t>(slip - kSlipNames.begin())], name, words);
    }
    return kind == "other" ? other(name, words) : generalCost(kind + ' ' + name, words);
  }

  static bool pair(PairCosts& costs, const std::string& first, std::istream& words) {
    std::string second;
    Cost cost = 0;
    if (!(words >> second >> cost) || cost < 0) return false;
    const auto x = letterNamed(first);
    const auto y = letterNamed(second);
    if (x && y) costs[*x][*y] = cost;
    return x && y;
  }

  /// Stands before the lines of pairs.
  bool other(const std::string& name, std::istream& words) {
    const auto slip = std::ranges::find(kSlipNames, name);
    Cost cost = 0;
    if (slip == kSlipNames.end() || !(words >> cost) || cost <= 0) return false;
    for (auto& row : weights.pairs[static_cast<std::size_t>(slip - kSlipNames.begin())]) {
      row.fill(cost);
    }
    return true;
  }

  bool generalCost(const std::string& name, std::istream& words) {
    const auto found = general.find(name);
    return found != general.end() && words >> *found->second;
  }

  [[nodiscard]] bool whole() const {
    const auto isSet = [](const PairCosts& costs) { return costs[0][0] > 0; };
    return std::ranges::all_of(weights.pairs, isSet) && weights.nearChange > 0 &&
           weights.nearExtra > 0 && weights.firstChange > 0 && weights.firstSwap > 0;
  }
};

std::string costLine(const std::string& what, Cost cost) {
  std::array<char, 32> number;
  std::snprintf(number.data(), number.size(), " %.2f\n", static_cast<double>(cost));
  return what + number.data();
}

}  // namespace

std::optional<EditWeights> parseEditWeights(std::string_view text) {
  Reader reader;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) {
    if (!reader.line(line)) return std::nullopt;
  }
  if (!reader.whole()) return std::nullopt;
  return reader.weights;
}

std::string formatEditWeights(const EditWeights& weights, const std::array<Cost, kSlips>& others) {
  std::string text = costLine("near change", weights.nearChange);
  text += costLine("near extra", weights.nearExtra);
  text += costLine("first change", weights.firstChange);
  text += costLine("first swap", weights.firstSwap);
  for (std::size_t slip = 0; slip < kSlips; ++slip) {
    const std::string name(kSlipNames[slip]);
    text += costLine("other " + name, others[slip]);
    for (Letter x = 0; x < kLetters; ++x) {
      for (Letter y = 0; y < kLetters; ++y) {
        const Cost cost = weights.pairs[slip][x][y];
        if (cost == others[slip]) continue;
        text += costLine(name + ' ' + characterOf(x) + ' ' + characterOf(y), cost);
      }
    }
  }
  return text;
}

}  // namespace quorvane::corrections
