#include "tools/checker/PopupList.h"

#include <algorithm>
#include <utility>

#include "tools/checker/RuntimeFile.h"

namespace quorvane::checker {

namespace {

constexpr std::size_t kLineLimit = 63;

std::filesystem::path fileIn(const std::filesystem::path& runtimeFolder) {
  return runtimeFolder / "popup";
}

/// Empty where the content has no whole line at its beginning.
std::optional<std::string> takeLine(std::string_view& rest) {
  const std::size_t end = rest.find('\n');
  if (end == std::string_view::npos || !isPopupLine(rest.substr(0, end))) return std::nullopt;
  std::string line(rest.substr(0, end));
  rest.remove_prefix(end + 1);
  return line;
}

bool isSaneCount(std::size_t count) { return count >= 1 && count <= kMostSuggestions; }

}  // namespace

bool isPopupLine(std::string_view text) {
  return !text.empty() && text.size() <= kLineLimit &&
         std::ranges::all_of(text, [](char c) { return c >= 0x20 && c < 0x7F; });
}

std::optional<std::string> formatPopupList(const PopupList& list) {
  if (!isPopupLine(list.word) || !isSaneCount(list.suggestions.size()) ||
      !std::ranges::all_of(list.suggestions, isPopupLine)) {
    return std::nullopt;
  }
  std::string content = list.word + '\n';
  for (const std::string& suggestion : list.suggestions) content += suggestion + '\n';
  return content;
}

std::optional<PopupList> parsePopupList(std::string_view content) {
  auto word = takeLine(content);
  if (!word) return std::nullopt;
  PopupList list{std::move(*word), {}};
  while (!content.empty() && list.suggestions.size() < kMostSuggestions) {
    auto suggestion = takeLine(content);
    if (!suggestion) return std::nullopt;
    list.suggestions.push_back(std::move(*suggestion));
  }
  if (!content.empty() || list.suggestions.empty()) return std::nullopt;
  return list;
}

bool writePopupList(const std::filesystem::path& runtimeFolder, const PopupList& list) {
  return putRuntimeFile(fileIn(runtimeFolder), formatPopupList(list));
}

void removePopupList(const std::filesystem::path& runtimeFolder) {
  removeRuntimeFile(fileIn(runtimeFolder));
}

std::optional<PopupList> readPopupList(const std::filesystem::path& runtimeFolder) {
  const auto content = readRuntimeFile(fileIn(runtimeFolder), kPopupListSizeLimit);
  return content ? parsePopupList(*content) : std::nullopt;
}

}  // namespace quorvane::checker
