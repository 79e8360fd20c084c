#include "hosts/desktop/UserDefaults.h"

namespace quorvane::desktop {
namespace {

const std::string kGroup = "Defaults";

}  // namespace

UserDefaults::UserDefaults(const std::filesystem::path& folder, quorvane::LogSink& log)
    : file_(folder / "user-defaults.ini", log) {}

void UserDefaults::setBool(bool value, std::string_view key) {
  const std::string name(key);
  if (file_.has(kGroup, name) && file_.boolean(kGroup, name) == value) return;
  file_.setBoolean(kGroup, name, value);
  file_.save();
}

bool UserDefaults::boolForKey(std::string_view key) {
  return file_.boolean(kGroup, std::string(key));
}

}  // namespace quorvane::desktop
