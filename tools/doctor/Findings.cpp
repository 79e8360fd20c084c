// Findings for a person and for a program.

#include <array>
#include <sstream>

#include "hosts/desktop/PrintableLine.h"
#include "tools/doctor/Checks.h"

namespace quorvane::doctor {
namespace {

constexpr std::array kStates{"good", "bad", "open"};

const char* nameOf(State state) { return kStates[static_cast<std::size_t>(state)]; }

std::string inQuotes(const std::string& text) {
  std::string result = "\"";
  for (const char each : desktop::printableLine(text)) {
    if (each == '"' || each == '\\') result += '\\';
    result += each;
  }
  return result + "\"";
}

}  // namespace

std::string asText(const std::vector<Finding>& findings) {
  std::ostringstream out;
  for (const Finding& each : findings) {
    std::string head = nameOf(each.state);
    head.resize(6, ' ');
    head += each.check;
    head.resize(25, ' ');
    out << head << desktop::printableLine(each.found);
    if (!each.remedy.empty()) out << ": " << desktop::printableLine(each.remedy);
    out << '\n';
  }
  return out.str();
}

std::string asJSON(const std::vector<Finding>& findings) {
  std::string items;
  for (const Finding& each : findings) {
    items += std::string(items.empty() ? "" : ",\n ") + "{\"check\": " + inQuotes(each.check) +
             ", \"state\": " + inQuotes(nameOf(each.state)) +
             ", \"found\": " + inQuotes(each.found) + ", \"remedy\": " + inQuotes(each.remedy) +
             "}";
  }
  return "[" + items + "]\n";
}

}  // namespace quorvane::doctor
