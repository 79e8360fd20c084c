#pragma once
// What the open popup offers, told to whoever draws it in another process: the file `popup` in the
// runtime folder, mode 0600, at most 1024 bytes, written whole and then renamed.
//
//     teh            the misspelt word
//     the            the suggestion for digit 1
//     tea            ... for digit 2, and so on, nine at most
//
// Each line is printable ASCII, at most 63 characters, ended by a line feed; nothing stands behind
// the last. The popup's place is the rectangle in fields 52 and 53: a row of 16 points for each
// suggestion, 8 points a character, with a digit and a space before the longest one and a space
// behind it. The file is there before field 31 of the tool record becomes 1, and goes after it has
// become 0. What a killed stand-in leaves goes at the next start, so that only the field tells
// whether the popup is open.

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane::checker {

inline constexpr std::size_t kMostSuggestions = 9;
inline constexpr std::size_t kPopupListSizeLimit = 1024;

struct PopupList {
  std::string word;
  std::vector<std::string> suggestions;  ///< one at least
  bool operator==(const PopupList&) const = default;
};

/// True where `text` can stand in a list.
bool isPopupLine(std::string_view text);

/// Empty where a line can't stand in a list, or the number of suggestions is none of 1 to 9.
std::optional<std::string> formatPopupList(const PopupList& list);
/// Empty where `content` is anything but what `formatPopupList` gives.
std::optional<PopupList> parsePopupList(std::string_view content);

/// False where the list has no written form or the file can't be written; no list stands there
/// then.
bool writePopupList(const std::filesystem::path& runtimeFolder, const PopupList& list);
void removePopupList(const std::filesystem::path& runtimeFolder);
/// The list that stands there now. Empty where there is none, or something else.
std::optional<PopupList> readPopupList(const std::filesystem::path& runtimeFolder);

}  // namespace quorvane::checker
