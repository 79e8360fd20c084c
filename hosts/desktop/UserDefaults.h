#pragma once

#include "hosts/desktop/KeyFile.h"
#include "platform/UserDefaults.h"

namespace quorvane::desktop {

class UserDefaults final : public quorvane::UserDefaults {
 public:
  UserDefaults(const std::filesystem::path& folder, quorvane::LogSink& log);

  /// On the disk when it returns. An unchanged value writes nothing.
  void setBool(bool value, std::string_view key) override;
  bool boolForKey(std::string_view key) override;

 private:
  KeyFile file_;
};

}  // namespace quorvane::desktop
