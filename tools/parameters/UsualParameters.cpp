#include "tools/parameters/UsualParameters.h"

#include "tools/parameters/ShortcutNames.h"

namespace quorvane::parameters {
namespace {

struct UsualShortcut {
  FourCharCode command;
  std::string_view keys;
};
/// With three modifiers: terminals and applications leave these alone.
constexpr std::array<UsualShortcut, 9> kUsualShortcuts{{{"CkAl"_4cc, "cmd+control+option+a"},
                                                        {"CkSp"_4cc, "cmd+control+option+s"},
                                                        {"CkSe"_4cc, "cmd+control+option+g"},
                                                        {"CkSb"_4cc, "cmd+control+option+b"},
                                                        {"ShSg"_4cc, "cmd+control+option+w"},
                                                        {"LkUp"_4cc, "cmd+control+option+l"},
                                                        {"CkRd"_4cc, "cmd+control+option+r"},
                                                        {"GtWr"_4cc, "cmd+control+option+u"},
                                                        {"GtMs"_4cc, "cmd+control+option+p"}}};

bool addShortcuts(ResourceFork& file) {
  if (file.find(QORVPARAMMENUCMMDKEYRESTYPE, kParamsID) != nullptr) return false;
  for (const UsualShortcut& each : kUsualShortcuts) {
    setShortcut(file, shortcutOf(each.command, each.keys));
  }
  return true;
}

/// Whoever has turned everything off has no record, and none is made for him.
bool addSwitches(ResourceFork& file) {
  if (file.find(QORVPARAMCAPPKEYRESTYPE, kAppSwitchesID) != nullptr) return false;
  for (const OwnApplication* const own : kOwnApplications) {
    setSwitches(file, own->application(), own->usual);
  }
  return true;
}

/// A record that the input method has made bears the bundle identifier of all our text fields, and
/// would be read for the others, too.
bool renameRecords(ResourceFork& file) {
  bool renamed = false;
  for (const Switches& each : switchesIn(file)) {
    const OwnApplication* const own = ownApplication(each.application.signature);
    if (own == nullptr || own->identifier == each.application.bundleIdentifier) continue;
    setSwitches(file, own->application(), each.word);
    renamed = true;
  }
  return renamed;
}

}  // namespace

const OwnApplication* ownApplication(FourCharCode signature) {
  const auto* const known =
      std::ranges::find(kOwnApplications, signature, &OwnApplication::signature);
  return known == kOwnApplications.end() ? nullptr : *known;
}

bool addUsual(ResourceFork& file) {
  const bool shortcuts = addShortcuts(file);
  const bool switches = addSwitches(file);
  return renameRecords(file) || shortcuts || switches;
}

}  // namespace quorvane::parameters
