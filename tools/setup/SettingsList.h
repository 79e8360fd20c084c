#pragma once
// A list in the desktop's settings (GSettings). Its entries are told as the settings print them:
// 'quorvane' with its quotes, or ('ibus', 'quorvane').

#include <gio/gio.h>

#include <memory>
#include <string>
#include <vector>

namespace quorvane::setup {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};

class SettingsList {
 public:
  /// Missing where the schema isn't installed or has no such list.
  SettingsList(const char* schema, const char* key);

  [[nodiscard]] bool isThere() const { return settings_ != nullptr; }
  /// The user's own list stands, not the desktop's usual one.
  [[nodiscard]] bool isUsers() const;
  [[nodiscard]] std::vector<std::string> entries() const;
  // Both are false where the settings didn't keep it.
  bool write(const std::vector<std::string>& entries);
  bool reset();

 private:
  std::unique_ptr<GSettings, Unref> settings_;
  const char* key_;
};

}  // namespace quorvane::setup
