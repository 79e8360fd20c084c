#include "tools/word_data/TextFile.h"

#include <simdjson.h>

#include <charconv>
#include <fstream>
#include <iterator>
#include <utility>

namespace quorvane::word_data {
namespace {

bool isUtf8(std::string_view text) { return simdjson::validate_utf8(text.data(), text.size()); }

}  // namespace

TextFile::TextFile(std::filesystem::path path) : path_(std::move(path)) {
  std::ifstream file(path_, std::ios::binary);
  text_.assign(std::istreambuf_iterator<char>(file), {});
  if (!file || std::filesystem::is_directory(path_)) fail("can't be read");
  splitLines();
  checkEncoding();
}

void TextFile::splitLines() {
  std::string_view rest = text_;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines_.push_back(line);
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
}

void TextFile::checkEncoding() const {
  if (isUtf8(text_)) return;
  for (std::size_t line = 0; line < lines_.size(); ++line)
    if (!isUtf8(lines_[line])) fail(line, "not UTF-8");
  fail("not UTF-8");
}

void TextFile::fail(std::size_t line, std::string_view what) const {
  throw SourceError(path_.string() + ":" + std::to_string(line + 1) + ": " + std::string(what));
}

void TextFile::fail(std::string_view what) const {
  throw SourceError(path_.string() + ": " + std::string(what));
}

std::vector<std::string_view> fields(std::string_view line) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return parts;
    const std::size_t end = std::min(line.find_first_of(" \t", begin), line.size());
    parts.push_back(line.substr(begin, end - begin));
    line.remove_prefix(end);
  }
}

long long number(std::string_view digits) {
  long long value = -1;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value);
  return error == std::errc{} && stop == end && value >= 0 ? value : -1;
}

}  // namespace quorvane::word_data
