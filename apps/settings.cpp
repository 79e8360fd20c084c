// `quorvane settings`

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "apps/Command.h"
#include "apps/MainApplicationSetting.h"
#include "apps/SettingsList.h"
#include "apps/UserParameters.h"
#include "hosts/desktop/DesktopConfiguration.h"
#include "hosts/menu/MainMenu.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/menu/MenuTable.h"
#include "tools/parameters/ShortcutNames.h"
#include "tools/parameters/SwitchNames.h"
#include "tools/parameters/UsualParameters.h"
#include "tools/parameters/disk/ParameterFileOnDisk.h"

namespace quorvane {
namespace {

using parameters::ResourceFork;
using Names = std::vector<std::string>;

constexpr std::array<parameters::Flag, 4> kSettable{parameters::kWithSpace, parameters::kVertical,
                                                    parameters::kShiftToggle,
                                                    parameters::kPencilMenu};

std::filesystem::path usersData() {
  return desktop::DesktopConfiguration::fromEnvironment().dataDirectory;
}

template <class Table>
Names namesOf(const Table& table) {
  Names names;
  for (const auto& each : table) names.emplace_back(each.name);
  return names;
}

std::string listed(const Names& names) {
  std::string all;
  for (const std::string& name : names) all += (all.empty() ? "" : ", ") + name;
  return all;
}

/// A program under the desktop's framework goes by its name alone, which may have four characters.
parameters::KnownApplication applicationOf(const ResourceFork& file, const std::string& word) {
  for (const parameters::OwnApplication* const own : parameters::kOwnApplications) {
    if (word == own->name) return own->application();
  }
  parameters::KnownApplication program{parameters::kNoSignature, word};
  if (word.size() != 4 || parameters::switchesOf(file, program)) return program;
  const std::vector<std::uint8_t> bytes(word.begin(), word.end());
  return {bigEndianNumber<FourCharCode>(bytes), {}};
}

/// `work` says what it has changed.
template <class Change>
int change(const Change& work) {
  const std::filesystem::path support = usersData();
  prepareUserParameters(support);
  std::string said;
  parameters::changeParameterFile(support, [&](ResourceFork& file) { said = work(file); });
  std::cout << said << '\n';
  return kExitDone;
}

int listSettings(bool json) {
  const ResourceFork file = parameters::readParameterFile(usersData());
  std::cout << (json ? settingsAsJSON(file) : settingsAsText(file));
  return kExitDone;
}

int setOne(const std::string& name, bool on) {
  const auto* const flag = std::ranges::find(kSettable, name, &parameters::Flag::name);
  return change([&](ResourceFork& file) {
    const bool was = parameters::flagIn(file, *flag).value_or(false);
    parameters::setFlag(file, *flag, on);
    return name + (was == on ? " was " : " is now ") + (on ? "on" : "off") +
           (was == on ? " already" : "");
  });
}

// Switches.

struct SwitchChange {
  std::uint32_t on = 0;
  std::uint32_t off = 0;
};

SwitchChange changeOf(const Names& words) {
  SwitchChange all;
  for (const std::string& word : words) {
    const bool on = word.starts_with('+');
    const bool hasSign = on || word.starts_with('-');
    const std::string name = hasSign ? word.substr(1) : std::string();
    const auto* const known =
        std::ranges::find(parameters::kSwitchNames, name, &parameters::SwitchName::name);
    if (known == parameters::kSwitchNames.end()) {
      throw std::invalid_argument("not a switch with + or - before it: \"" + word +
                                  "\"; known are " + listed(namesOf(parameters::kSwitchNames)));
    }
    (on ? all.on : all.off) |= known->bit;
  }
  return all;
}

int changeSwitches(const Names& words) {
  if (words.size() < 2) throw std::invalid_argument("switches needs APP and +NAME or -NAME");
  const SwitchChange wanted = changeOf({words.begin() + 1, words.end()});
  return change([&](ResourceFork& file) {
    const parameters::KnownApplication asked = applicationOf(file, words.front());
    const parameters::Switches before =
        parameters::switchesOf(file, asked).value_or(parameters::Switches{asked, kDefaultAppFlags});
    const std::uint32_t word = (before.word & ~wanted.off) | wanted.on;
    parameters::setSwitches(file, before.application, word);
    return words.front() + ": " + switchesText(before.word) + "\n  is now: " + switchesText(word);
  });
}

// Shortcuts.

FourCharCode commandOf(const std::string& word) {
  Names known;
  for (const MenuRow& row : kMenuTable) {
    known.push_back(codeText(row.commandID));
    if (known.back() == word) return row.commandID;
  }
  throw std::invalid_argument("no command \"" + word + "\"; known are " + listed(known));
}

/// Only items of the menu itself are matched with keys.
void requireMatched(FourCharCode command) {
  const auto menu = loadMainMenu();
  Names matched;
  for (const auto& item : menu->itemArray) {
    const FourCharCode its = Convert_TagToCommandID(static_cast<std::int32_t>(item->tag));
    if (its == 0 || item->submenu) continue;
    if (its == command) return;
    matched.push_back(codeText(its));
  }
  throw std::invalid_argument(
      "no key runs " + codeText(command) +
      ", whose item stands in a submenu or opens one; those that a key can run are " +
      listed(matched));
}

void requireUnused(const parameters::Shortcuts& all, const parameters::KeyShortcut& shortcut) {
  for (const parameters::KeyShortcut& each : all) {
    const bool same = each.key == shortcut.key && each.modifiers == shortcut.modifiers;
    if (!same || each.command == shortcut.command) continue;
    throw std::invalid_argument(parameters::keysOf(shortcut) + " is the shortcut of " +
                                codeText(each.command));
  }
}

std::string shownKeys(const parameters::Shortcuts& all, FourCharCode command) {
  const auto known = std::ranges::find(all, command, &parameters::KeyShortcut::command);
  return known == all.end() ? "none" : parameters::keysOf(*known);
}

int changeShortcut(const std::string& command, const std::string& keys) {
  const auto shortcut = parameters::shortcutOf(commandOf(command), keys);
  if (shortcut.key != -1) requireMatched(shortcut.command);
  return change([&](ResourceFork& file) {
    const parameters::Shortcuts all = parameters::shortcutsIn(file);
    if (shortcut.key != -1) requireUnused(all, shortcut);
    const std::string before = shownKeys(all, shortcut.command);
    parameters::setShortcut(file, shortcut);
    return command + ": " + before + " is now " + parameters::keysOf(shortcut);
  });
}

/// Ours get the usual ones. False: it had no others.
bool resetSwitches(ResourceFork& file, const parameters::KnownApplication& application) {
  const auto* const own = parameters::ownApplication(application.signature);
  if (own == nullptr) return parameters::forgetSwitches(file, application);
  const auto known = parameters::switchesOf(file, application);
  parameters::setSwitches(file, own->application(), own->usual);
  return !known || known->word != own->usual;
}

int reset(const std::string& name) {
  return change([&](ResourceFork& file) {
    const parameters::KnownApplication asked = applicationOf(file, name);
    const auto known = parameters::switchesOf(file, asked);
    const parameters::KnownApplication application = known ? known->application : asked;
    const bool switches = resetSwitches(file, application);
    const bool shortcuts = parameters::forgetShortcuts(file, application.signature);
    if (!switches && !shortcuts) return name + " had no settings of its own";
    return name + ": forgotten are its " + (switches ? "switches" : "") +
           (switches && shortcuts ? " and " : "") + (shortcuts ? "shortcuts" : "");
  });
}

/// What a word can't mean is bad usage.
template <class Work>
Run usage(const Work& work) {
  return [work] {
    try {
      return work();
    } catch (const std::invalid_argument& error) {
      std::cerr << "quorvane settings: " << error.what() << '\n';
      return kExitBadUsage;
    }
  };
}

void addList(CLI::App& command, Run& run) {
  CLI::App* const print = command.add_subcommand("list", "Print all of them");
  const auto json = std::make_shared<bool>(false);
  print->add_flag("--json", *json, "As JSON");
  print->callback([&run, json] { run = [json] { return listSettings(*json); }; });
}

void addSet(CLI::App& command, Run& run) {
  CLI::App* const turn = command.add_subcommand("set", "Turn a setting on or off");
  const auto words = std::make_shared<std::array<std::string, 2>>();
  turn->add_option("NAME", (*words)[0])->required()->check(CLI::IsMember(namesOf(kSettable)));
  turn->add_option("VALUE", (*words)[1])->required()->check(CLI::IsMember({"on", "off"}));
  turn->callback(
      [&run, words] { run = [words] { return setOne((*words)[0], (*words)[1] == "on"); }; });
}

// -NAME isn't an option: what begins with APP is taken as it stands.
void addSwitches(CLI::App& command, Run& run) {
  CLI::App* const turn = command.add_subcommand(
      "switches", "Turn switches of an application on or off: switches APP +spelling -grammar");
  turn->prefix_command();
  std::string names = "Switches:";
  for (const auto& each : parameters::kSwitchNames) {
    names.append("\n  ").append(each.name).append(": ").append(each.meaning);
  }
  turn->footer(names);
  turn->callback(
      [&run, turn] { run = usage([words = turn->remaining()] { return changeSwitches(words); }); });
}

void addShortcut(CLI::App& command, Run& run) {
  CLI::App* const choose = command.add_subcommand(
      "shortcut", "Give a command of the menu a shortcut: shortcut CkSp cmd+shift+s");
  const auto words = std::make_shared<std::array<std::string, 2>>();
  choose->add_option("COMMAND", (*words)[0], "One that `list` prints")->required();
  choose->add_option("KEYS", (*words)[1], "Modifiers and a key, or none")->required();
  choose->callback(
      [&run, words] { run = usage([words] { return changeShortcut((*words)[0], (*words)[1]); }); });
}

void addReset(CLI::App& command, Run& run) {
  CLI::App* const forget =
      command.add_subcommand("reset", "Forget what an application has of its own");
  const auto name = std::make_shared<std::string>();
  forget->add_option("APP", *name)->required();
  forget->callback([&run, name] { run = usage([name] { return reset(*name); }); });
}

}  // namespace

void addSettingsCommand(CLI::App& app, Run& run) {
  CLI::App* const command = app.add_subcommand(
      "settings", "What the user has set: shortcuts, switches of applications, completion.");
  command->require_subcommand(1);
  addList(*command, run);
  addSet(*command, run);
  addSwitches(*command, run);
  addShortcut(*command, run);
  addReset(*command, run);
  addMainApplicationSetting(*command, run);
  command->footer(
      "APP is `type` or `desk`, a signature of four characters, or the name or bundle identifier "
      "of\n"
      "an application that has no signature. A text field sees a change when another application "
      "has\n"
      "come to the front, or at its next start.");
}

}  // namespace quorvane
