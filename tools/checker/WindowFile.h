#pragma once
// What the stand-in's own window shows, told to whoever draws it in another process: the file
// `window` in the runtime folder, mode 0600, at most 4096 bytes, written whole and then renamed.
//
//     Check All: 1 of 3                  the title
//     1-9 take  Return the first         the keys that do something
//     I [recieve] the letter.            the first line of the page, and so on, 12 at most
//
// Each line is UTF-8 without control characters, at most 66 UTF-16 units, ended by a line feed;
// nothing stands behind the last. The file is there before field 9 of the tool record becomes 1,
// changes with each key that the window takes, and goes after the field has become 0: only the
// field tells whether the window is open.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "tools/checker/documents/WindowText.h"

namespace quorvane::checker {

inline constexpr std::size_t kWindowFileLimit = 4096;

/// Where the window's keys go: a key is the id of a message without a payload, its character or
/// the classic code of one without.
inline constexpr std::string_view kWindowKeyPort = "Q7T2M4K9W1.com.tallowmere.Quorvane.window";

/// Empty where a line or the number of them breaks the bounds.
std::optional<std::string> formatWindowFile(const WindowText& text);
/// Empty where `content` is anything but what `formatWindowFile` gives.
std::optional<WindowText> parseWindowFile(std::string_view content);

/// False where the text has no written form or the file can't be written; none stands there then.
bool writeWindowFile(const std::filesystem::path& runtimeFolder, const WindowText& text);
void removeWindowFile(const std::filesystem::path& runtimeFolder);
/// What stands there now. Empty where there is nothing, or something else.
std::optional<WindowText> readWindowFile(const std::filesystem::path& runtimeFolder);

}  // namespace quorvane::checker
