#pragma once
// A folder of small sources for a test, gone with it.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "tools/word_data/TextFile.h"

namespace quorvane::word_data {

class SourceFolder {
 public:
  SourceFolder() { std::filesystem::create_directories(path_); }
  ~SourceFolder() { std::filesystem::remove_all(path_); }
  SourceFolder(const SourceFolder&) = delete;
  SourceFolder& operator=(const SourceFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

  std::filesystem::path write(std::string_view name, std::string_view text) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file;
  }

 private:
  std::filesystem::path path_ =
      std::filesystem::temp_directory_path() / ("word_data." + std::to_string(getpid()));
};

/// What `act` throws as a SourceError; "" if nothing.
template <typename Act>
std::string sourceError(Act act) {
  try {
    act();
  } catch (const SourceError& error) {
    return error.what();
  }
  return "";
}

}  // namespace quorvane::word_data
