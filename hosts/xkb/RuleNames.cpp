#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>

#include "hosts/xkb/XkbLayout.h"

namespace quorvane::xkb {
namespace {

/// Nobody's keyboard file is longer; what calls itself one may be.
constexpr std::size_t kFileLimit = 64 * 1024;

struct Setting {
  const char* variable;
  const char* line;
  std::string RuleNames::*value;
};

constexpr std::array<Setting, 5> kSettings{{
    {"XKB_DEFAULT_RULES", "XKBRULES", &RuleNames::rules},
    {"XKB_DEFAULT_MODEL", "XKBMODEL", &RuleNames::model},
    {"XKB_DEFAULT_LAYOUT", "XKBLAYOUT", &RuleNames::layout},
    {"XKB_DEFAULT_VARIANT", "XKBVARIANT", &RuleNames::variant},
    {"XKB_DEFAULT_OPTIONS", "XKBOPTIONS", &RuleNames::options},
}};

std::string valueOf(const char* variable) {
  const char* const value = std::getenv(variable);
  return value == nullptr ? std::string() : std::string(value);
}

RuleNames namesFromEnvironment() {
  RuleNames names;
  for (const Setting& setting : kSettings) names.*setting.value = valueOf(setting.variable);
  return names;
}

std::string unquoted(std::string text) {
  text.erase(text.find_last_not_of(" \t\r") + 1);
  const bool quoted = text.size() >= 2 && (text.front() == '"' || text.front() == '\'') &&
                      text.back() == text.front();
  return quoted ? text.substr(1, text.size() - 2) : text;
}

/// A line such as XKBLAYOUT="de".
void readLine(const std::string& line, RuleNames& names) {
  const std::size_t equals = line.find('=');
  if (equals == std::string::npos) return;
  const std::string name = line.substr(0, equals);
  const auto* const setting =
      std::ranges::find_if(kSettings, [&](const Setting& each) { return each.line == name; });
  if (setting != kSettings.end()) names.*setting->value = unquoted(line.substr(equals + 1));
}

RuleNames namesFromFile(const std::string& file) {
  RuleNames names;
  std::ifstream lines(file);
  std::string line;
  for (std::size_t size = 0; std::getline(lines, line); size += line.size()) {
    if (size > kFileLimit) return {};
    readLine(line, names);
  }
  return names;
}

RuleNames firstOnly(RuleNames names) {
  for (std::string* const list : {&names.layout, &names.variant}) {
    *list = list->substr(0, list->find(','));
  }
  return names;
}

}  // namespace

RuleNames parseLayoutName(const std::string& name) {
  RuleNames names;
  const std::size_t open = name.find('(');
  names.layout = name.substr(0, open);
  if (open == std::string::npos) return names;
  names.variant = name.substr(open + 1, name.find(')', open) - open - 1);
  return names;
}

RuleNames chosenLayout(const std::string& file) {
  const std::string own = valueOf("QUORVANE_LAYOUT");
  if (!own.empty()) return firstOnly(parseLayoutName(own));
  RuleNames names = namesFromEnvironment();
  if (names == RuleNames{}) names = namesFromFile(file);
  return firstOnly(std::move(names));
}

}  // namespace quorvane::xkb
