#include "apps/SettingsList.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "apps/Hexadecimal.h"
#include "apps/JSONText.h"
#include "src/menu/MenuTable.h"
#include "tools/parameters/ShortcutNames.h"
#include "tools/parameters/SwitchNames.h"
#include "tools/parameters/UsualParameters.h"

namespace quorvane {
namespace {

using parameters::ResourceFork;

constexpr std::array<parameters::Flag, 5> kListed{
    parameters::kPencilMenu, parameters::kMenuActivated, parameters::kWithSpace,
    parameters::kVertical, parameters::kShiftToggle};

std::string_view itemOf(FourCharCode command) {
  const auto* const row = std::ranges::find(kMenuTable, command, &MenuRow::commandID);
  return row == kMenuTable.end() ? std::string_view() : row->item;
}

/// `type` and `desk` by their names, others by what they have.
std::string nameOf(const parameters::KnownApplication& application) {
  const auto* const own = parameters::ownApplication(application.signature);
  if (own != nullptr) return std::string(own->name);
  std::string identifier = printable(application.bundleIdentifier);
  if (application.signature == parameters::kNoSignature) return identifier;
  return codeText(application.signature) + (identifier.empty() ? "" : " " + identifier);
}

std::string stateOf(const ResourceFork& file, const parameters::Flag& flag) {
  const auto on = parameters::flagIn(file, flag);
  return !on ? "not said" : *on ? "on" : "off";
}

std::string linesOf(const parameters::Shortcuts& all) {
  std::string lines;
  for (const auto& each : all) {
    lines += "  " + codeText(each.command) + "  " + parameters::keysOf(each);
    if (const auto item = itemOf(each.command); !item.empty()) lines.append("  ").append(item);
    lines += '\n';
  }
  return lines;
}

// JSON.

std::string shortcutsJSON(const parameters::Shortcuts& all) {
  return arrayOf(all, [](const parameters::KeyShortcut& each) {
    return R"({"command": )" + inQuotes(codeText(each.command)) + R"(, "keys": )" +
           inQuotes(printable(parameters::keysOf(each))) + "}";
  });
}

std::string applicationShortcutsJSON(const ResourceFork& file) {
  return arrayOf(parameters::applicationShortcutsIn(file), [](const auto& each) {
    return R"({"signature": )" + inQuotes(codeText(each.signature)) + R"(, "shortcuts": )" +
           shortcutsJSON(each.shortcuts) + "}";
  });
}

std::vector<std::string_view> namesIn(std::uint32_t word) {
  std::vector<std::string_view> names;
  for (const auto& each : parameters::kSwitchNames) {
    if ((word & each.bit) != 0) names.push_back(each.name);
  }
  return names;
}

std::string switchesJSON(const ResourceFork& file) {
  return arrayOf(parameters::switchesIn(file), [](const parameters::Switches& each) {
    return R"({"signature": )" + inQuotes(codeText(each.application.signature)) +
           R"(, "bundleIdentifier": )" + inQuotes(printable(each.application.bundleIdentifier)) +
           R"(, "word": )" + std::to_string(each.word) + R"(, "on": )" +
           arrayOf(namesIn(each.word), inQuotes) + "}";
  });
}

}  // namespace

std::string codeText(FourCharCode code) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(code >> shift & 0xFF);
  return printable(bytes);
}

std::string switchesText(std::uint32_t word) {
  std::string text;
  for (const std::string_view name : namesIn(word)) {
    text.append(text.empty() ? "" : ", ").append(name);
  }
  return (text.empty() ? "nothing" : text) + " (" + hexadecimal(word) + ")";
}

std::string settingsAsText(const ResourceFork& file) {
  std::string text = "shortcuts\n" + linesOf(parameters::shortcutsIn(file));
  for (const auto& each : parameters::applicationShortcutsIn(file)) {
    text += "shortcuts in " + nameOf({each.signature, {}}) + '\n' + linesOf(each.shortcuts);
  }
  text += "switches\n";
  for (const parameters::Switches& each : parameters::switchesIn(file)) {
    text += "  " + nameOf(each.application) + ": " + switchesText(each.word) + '\n';
  }
  for (const parameters::Flag& flag : kListed) {
    text.append(flag.name).append(": ") += stateOf(file, flag) + '\n';
  }
  return text;
}

std::string settingsAsJSON(const ResourceFork& file) {
  std::string text = "{\n  \"shortcuts\": " + shortcutsJSON(parameters::shortcutsIn(file)) +
                     ",\n  \"applicationShortcuts\": " + applicationShortcutsJSON(file) +
                     ",\n  \"switches\": " + switchesJSON(file);
  for (const parameters::Flag& flag : kListed) {
    const auto on = parameters::flagIn(file, flag);
    text += ",\n  " + inQuotes(flag.name) + ": " + (!on ? "null" : *on ? "true" : "false");
  }
  return text + "\n}\n";
}

}  // namespace quorvane
