#pragma once
// A settings file: groups of named values, written whole and atomically at each change.

#include <glib.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/LogSink.h"

namespace quorvane::desktop {

class KeyFile {
 public:
  /// A missing file is an empty one; one that can't be read is logged and taken as empty, and lies
  /// aside under a name that ends in `.damaged` once something is saved.
  KeyFile(std::filesystem::path path, quorvane::LogSink& log);

  [[nodiscard]] bool boolean(const std::string& group, const std::string& key) const;
  [[nodiscard]] bool has(const std::string& group, const std::string& key) const;
  [[nodiscard]] std::string text(const std::string& group, const std::string& key) const;
  [[nodiscard]] std::vector<std::string> groups() const;
  void setBoolean(const std::string& group, const std::string& key, bool value);
  void setText(const std::string& group, const std::string& key, const std::string& value);
  void remove(const std::string& group, const std::string& key);
  void removeGroup(const std::string& group);
  /// False, logged, where it can't be written; the values stay in memory.
  bool save();

 private:
  struct Free {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
  };

  std::filesystem::path path_;
  quorvane::LogSink& log_;
  bool damaged_ = false;
  std::unique_ptr<GKeyFile, Free> file_;
};

}  // namespace quorvane::desktop
