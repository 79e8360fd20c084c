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
  if (file.find("QKYS"_4cc, 8888) != nullptr) return false;
  for (const UsualShortcut& each : kUsualShortcuts) {
    setShortcut(file, shortcutOf(each.command, each.keys));
  }
  return true;
}

bool addSwitches(ResourceFork& file, const OwnApplication& own) {
  if (switchesOf(file, own.application())) return false;
  setSwitches(file, own.application(), own.usual);
  return true;
}

}  // namespace

bool addUsual(ResourceFork& file) {
  bool added = addShortcuts(file);
  for (const OwnApplication* const own : kOwnApplications) added |= addSwitches(file, *own);
  return added;
}

}  // namespace quorvane::parameters
