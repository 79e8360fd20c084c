#pragma once
// A folder of files that comes into being as a whole: whoever looks sees the old one or the new
// one.

#include <filesystem>
#include <string>
#include <string_view>

namespace quorvane::word_data {

class OutputFolder {
 public:
  /// The files gather in a folder beside `path`, "PATH.new", which only one run at a time may use.
  /// Throws std::filesystem::filesystem_error.
  explicit OutputFolder(const std::filesystem::path& path);
  /// Without `finish` everything that was written goes, and the old folder stays.
  ~OutputFolder();
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;

  /// Throws std::runtime_error.
  void write(std::string_view name, std::string_view bytes) const;
  /// Puts the new folder in the old one's place and removes that. Throws
  /// std::filesystem::filesystem_error.
  void finish();

 private:
  std::filesystem::path path_;
  std::filesystem::path gathering_;
};

}  // namespace quorvane::word_data
