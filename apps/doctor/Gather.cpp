#include "apps/doctor/Gather.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "apps/FamilyStatus.h"
#include "apps/doctor/IBusDaemon.h"
#include "hosts/desktop/ApplicationPackage.h"
#include "hosts/desktop/DesktopConfiguration.h"
#include "hosts/desktop/PlainFile.h"
#include "hosts/desktop/SpellChecker.h"
#include "hosts/xkb/XkbLayout.h"
#include "tools/applications/ApplicationFolder.h"
#include "tools/checker/SharedSegments.h"
#include "tools/doctor/Environments.h"
#include "tools/parameters/disk/PreferencesOnDisk.h"
#include "tools/setup/InputSource.h"
#include "tools/setup/SettingsList.h"

namespace quorvane {
namespace {

using desktop::DesktopConfiguration;
using doctor::Facts;
using doctor::Variables;
using std::filesystem::path;

// Surroundings.

Variables ownVariables() {
  Variables variables;
  for (const char* const name : doctor::kVariables) {
    const char* const value = std::getenv(name);
    if (value != nullptr) variables[name] = value;
  }
  return variables;
}

/// Those of `kVariables` that it began with.
std::optional<Variables> variablesOf(std::int32_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/environ");
  if (process == 0 || !file) return std::nullopt;
  Variables variables;
  for (std::string entry; std::getline(file, entry, '\0');) {
    const std::size_t equals = std::min(entry.find('='), entry.size());
    const std::string name = entry.substr(0, equals);
    if (std::ranges::find(doctor::kVariables, name) == doctor::kVariables.end()) continue;
    variables[name] = entry.substr(std::min(equals + 1, entry.size()));
  }
  return variables;
}

// Component.

std::string textBetween(const std::string& text, const std::string& start, const std::string& end) {
  const std::size_t from = text.find(start);
  if (from == std::string::npos) return {};
  const std::size_t first = from + start.size();
  return text.substr(first, text.find(end, first) - first);
}

doctor::Component componentIn(const path& folder) {
  constexpr std::uint64_t kLargest = 64 * 1024;
  const path file = folder / "quorvane.xml";
  const auto bytes = desktop::readPlainFile(file, kLargest);
  if (!bytes) return {};
  const std::string command = textBetween({bytes->begin(), bytes->end()}, "<exec>", "</exec>");
  const std::string program = command.substr(0, command.find(' '));
  return {file, program, ::access(program.c_str(), X_OK) == 0};
}

/// The variable holds for the daemon, which this shell may not have begun with.
doctor::Component component(const Variables& variables) {
  const std::string chosen = doctor::valueOf(variables, "IBUS_COMPONENT_PATH");
  std::istringstream folders(chosen.empty() ? "/usr/share/ibus/component" : chosen);
  for (std::string folder; std::getline(folders, folder, ':');) {
    doctor::Component found = componentIn(folder);
    if (!found.file.empty()) return found;
  }
  return {};
}

// Settings.

std::optional<bool> isIn(const setup::InputSource& source) {
  const setup::SettingsList list(source.schema, source.key);
  if (!list.isThere()) return std::nullopt;
  return std::ranges::count(list.entries(), source.ours) != 0;
}

void addLists(Facts& facts) {
  for (const setup::InputSource& each : setup::inputSources({})) {
    (each.isGnome ? facts.inGnomeList : facts.inIBusList) = isIn(each);
  }
}

// The family.

std::uint64_t sizeOf(std::uint32_t key) {
  const auto* const row = std::ranges::find(checker::kSegments, key, &checker::SegmentRow::key);
  return row == checker::kSegments.end() ? 0 : row->size;
}

void addFamily(const FamilyStatus& family, Facts& facts) {
  for (const auto& [pid, status] : family.inputMethods) {
    facts.servers.push_back(pid);
    facts.field = status.field;
    facts.client = status.frontName();
  }
  for (const RunningMember& member : family.members) {
    if (member.process.announcement.signature == "QVPX"_4cc) {
      facts.mainApplication = member.process.pid;
    }
  }
}

/// Who runs in the user's own folder. A `type` or `desk` beside it is no part of the chain.
void addFamilies(const DesktopConfiguration& configuration, Facts& facts) {
  for (const FamilyStatus& each :
       familiesIn(configuration.runtimeDirectory, configuration.keyOffset)) {
    if (each.folder == configuration.runtimeDirectory) addFamily(each, facts);
  }
  for (const SegmentFacts& each : segmentsAt(configuration.keyOffset)) {
    facts.segments.push_back({each.key, each.size, sizeOf(each.key), each.owner});
  }
}

std::string launchFault(const DesktopConfiguration& configuration) {
  try {
    const auto chosen = parameters::chosenMainApplication(configuration.preferencesDirectory);
    const path application =
        chosen.value_or(applications::mainApplicationIn(configuration.applicationsDirectory));
    static_cast<void>(desktop::programOf(desktop::readApplicationPackage(application)));
    return {};
  } catch (const std::exception& error) {
    return error.what();
  }
}

// Words and keys.

std::vector<std::string> missingData(const path& bundle) {
  std::vector<std::string> missing;
  for (const char* const name : {"google_227800_words.bin", "frequency_and_ipa.json",
                                 "phonex_encoded_words.json", "phonex.js", "Quorvane.rsrc"}) {
    if (::access((bundle / name).c_str(), R_OK) != 0) missing.push_back((bundle / name).string());
  }
  return missing;
}

bool hasDictionary() {
  const std::u16string wrong = u"recieve";
  return !desktop::SpellChecker().guessesForWordRange({0, wrong.size()}, wrong, "en", 0).empty();
}

void addLayout(Facts& facts) {
  const xkb::RuleNames names = xkb::chosenLayout();
  facts.layout = names.layout.empty() ? "us" : names.layout;
  if (!names.variant.empty()) facts.layout += "(" + names.variant + ")";
  facts.hasLayout = xkb::layoutOf(names) != nullptr;
}

}  // namespace

Facts gatherFacts() {
  const auto configuration = DesktopConfiguration::fromEnvironment();
  Facts facts;
  facts.shell = ownVariables();
  facts.daemon = ibusDaemon(configuration.preferencesDirectory);
  facts.session = variablesOf(facts.daemon.process);
  facts.component = component(facts.session.value_or(facts.shell));
  addLists(facts);
  addFamilies(configuration, facts);
  facts.launchFault = launchFault(configuration);
  facts.user = ::geteuid();
  facts.missingData = missingData(configuration.bundleDirectory);
  facts.hasDictionary = hasDictionary();
  addLayout(facts);
  return facts;
}

}  // namespace quorvane
