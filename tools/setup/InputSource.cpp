#include "tools/setup/InputSource.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "hosts/xkb/XkbLayout.h"
#include "tools/setup/SettingsList.h"

namespace quorvane::setup {
namespace {

using Entries = std::vector<std::string>;

// The record's keys.
constexpr const char* kAdded = "Added";
constexpr const char* kWasUsual = "WasUsual";

bool contains(const Entries& entries, const std::string& entry) {
  return std::ranges::find(entries, entry) != entries.end();
}

std::string joined(const Entries& entries) {
  std::string text;
  for (const std::string& each : entries) text += (text.empty() ? "" : "\n") + each;
  return text;
}

Entries parted(const std::string& text) {
  Entries entries;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) entries.push_back(line);
  return entries;
}

std::string listed(const Entries& entries) {
  std::string text;
  for (const std::string& each : entries) text += (text.empty() ? "" : ", ") + each;
  return text;
}

std::string quoted(const std::string& text) { return text.empty() ? text : "'" + text + "'"; }

/// The first one that the component file names for this layout, such as xkb:de::ger.
std::string plainEngineOf(const std::filesystem::path& components, const xkb::RuleNames& layout) {
  std::ifstream file(components / "simple.xml");
  const std::string start = "<name>xkb:" + layout.layout + ":" + layout.variant + ":";
  for (std::string line; std::getline(file, line);) {
    const std::size_t found = line.find(start);
    if (found == std::string::npos) continue;
    const std::size_t name = line.find('>', found) + 1;
    return line.substr(name, line.find('<', name) - name);
  }
  return {};
}

std::string gnomeName(const xkb::RuleNames& layout) {
  return layout.variant.empty() ? layout.layout : layout.layout + "+" + layout.variant;
}

}  // namespace

std::vector<InputSource> inputSources(const std::filesystem::path& components) {
  xkb::RuleNames layout = xkb::chosenLayout();
  if (layout.layout.empty()) layout.layout = "us";
  return {{"IBus's engines", "org.freedesktop.ibus.general", "preload-engines", "'quorvane'",
           quoted(plainEngineOf(components, layout))},
          {"GNOME's input sources", "org.gnome.desktop.input-sources", "sources",
           "('ibus', 'quorvane')", "('xkb', " + quoted(gnomeName(layout)) + ")", true}};
}

void addInputSource(const InputSource& source, Record& record, Report& report) {
  SettingsList list(source.schema, source.key);
  if (!list.isThere()) return;
  Entries entries = list.entries();
  if (contains(entries, source.ours)) return;
  Entries added;
  if (entries.empty() && !source.plain.empty()) added.push_back(source.plain);
  added.push_back(source.ours);
  if (!record.keep(source.name,
                   {{kAdded, joined(added)}, {kWasUsual, list.isUsers() ? "no" : "yes"}})) {
    return;
  }
  entries.insert(entries.end(), added.begin(), added.end());
  if (list.write(entries)) {
    report.changes.push_back(std::string(source.name) + ": added " + listed(added));
  } else {
    record.forget(source.name);
    report.problems.push_back(std::string(source.name) +
                              ": the settings can't be written; run this within the session");
  }
}

void removeInputSource(const InputSource& source, Record& record, Report& report) {
  if (!record.has(source.name)) return;
  SettingsList list(source.schema, source.key);
  Entries removed;
  if (list.isThere()) {
    const Entries added = parted(record.text(source.name, kAdded));
    Entries entries = list.entries();
    std::ranges::copy_if(entries, std::back_inserter(removed),
                         [&](const std::string& each) { return contains(added, each); });
    std::erase_if(entries, [&](const std::string& each) { return contains(added, each); });
    const bool wasUsual = record.text(source.name, kWasUsual) == "yes" && entries.empty();
    if (!(wasUsual ? list.reset() : list.write(entries))) {
      report.problems.push_back(std::string(source.name) +
                                ": the settings can't be written; run this within the session");
      return;
    }
  }
  if (!removed.empty()) {
    report.changes.push_back(std::string(source.name) + ": removed " + listed(removed));
  }
  record.forget(source.name);
}

}  // namespace quorvane::setup
