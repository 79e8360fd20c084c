#pragma once
// A text file of a source or of ours, read whole, and how its faults are told.

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::word_data {

/// A source is missing or holds what it should not. "FILE:LINE: what", or "FILE: what".
class SourceError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class TextFile {
 public:
  /// Throws SourceError where the file can't be read or isn't UTF-8.
  explicit TextFile(std::filesystem::path path);
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;

  const std::string& text() const { return text_; }
  /// Without their ends, LF or CR LF. They last as long as this.
  const std::vector<std::string_view>& lines() const { return lines_; }
  /// `line` is an index into `lines`.
  [[noreturn]] void fail(std::size_t line, std::string_view what) const;
  [[noreturn]] void fail(std::string_view what) const;

 private:
  void splitLines();
  void checkEncoding() const;

  std::filesystem::path path_;
  std::string text_;
  std::vector<std::string_view> lines_;
};

/// The parts of `line` between runs of blanks.
std::vector<std::string_view> fields(std::string_view line);

/// A whole decimal number, or -1.
long long number(std::string_view digits);

}  // namespace quorvane::word_data
