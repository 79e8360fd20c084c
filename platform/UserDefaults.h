#pragma once
// NSUserDefaults: switches that outlive the process.

#include <string_view>

namespace quorvane {

class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  virtual void setBool(bool value, std::string_view key) = 0;
  /// False where the key isn't set.
  virtual bool boolForKey(std::string_view key) = 0;
};

}  // namespace quorvane
