#include "tools/checker/WindowFile.h"

#include <algorithm>
#include <utility>

#include "hosts/icu/IcuTextEncoding.h"
#include "src/base/Text.h"
#include "tools/checker/RuntimeFile.h"

namespace quorvane::checker {

namespace {

std::filesystem::path windowFileIn(const std::filesystem::path& runtimeFolder) {
  return runtimeFolder / "window";
}

bool isWindowLine(std::u16string_view line) {
  return line.size() <= kWindowColumns && hasUtf8Form(line) && onOneLine(line) == line;
}

/// Empty where `rest` has no whole line at its beginning.
std::optional<std::u16string> takeWindowLine(std::u16string_view& rest) {
  const std::size_t end = rest.find(u'\n');
  if (end == std::u16string_view::npos || !isWindowLine(rest.substr(0, end))) return std::nullopt;
  std::u16string line(rest.substr(0, end));
  rest.remove_prefix(end + 1);
  return line;
}

}  // namespace

std::optional<std::string> formatWindowFile(const WindowText& text) {
  std::u16string content = text.title + u'\n' + text.keys + u'\n';
  for (const std::u16string& line : text.lines) content += line + u'\n';
  const bool sane = isWindowLine(text.title) && isWindowLine(text.keys) &&
                    text.lines.size() <= kWindowLines &&
                    std::ranges::all_of(text.lines, isWindowLine);
  std::string utf8 = toUtf8(content);
  if (!sane || utf8.size() > kWindowFileLimit) return std::nullopt;
  return utf8;
}

std::optional<WindowText> parseWindowFile(std::string_view content) {
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
  if (content.size() > kWindowFileLimit) return std::nullopt;
  const auto units = IcuTextEncoding().initWithData(bytes, NSStringEncoding::UTF8);
  if (!units) return std::nullopt;
  std::u16string_view rest = *units;
  auto title = takeWindowLine(rest);
  auto keys = title ? takeWindowLine(rest) : std::nullopt;
  if (!keys) return std::nullopt;
  WindowText text{std::move(*title), std::move(*keys), {}};
  while (!rest.empty()) {
    auto line = takeWindowLine(rest);
    if (!line || text.lines.size() == kWindowLines) return std::nullopt;
    text.lines.push_back(std::move(*line));
  }
  return text;
}

bool writeWindowFile(const std::filesystem::path& runtimeFolder, const WindowText& text) {
  return putRuntimeFile(windowFileIn(runtimeFolder), formatWindowFile(text));
}

void removeWindowFile(const std::filesystem::path& runtimeFolder) {
  removeRuntimeFile(windowFileIn(runtimeFolder));
}

std::optional<WindowText> readWindowFile(const std::filesystem::path& runtimeFolder) {
  const auto content = readRuntimeFile(windowFileIn(runtimeFolder), kWindowFileLimit);
  return content ? parseWindowFile(*content) : std::nullopt;
}

}  // namespace quorvane::checker
