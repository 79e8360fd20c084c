#pragma once
// What submenus that are made of files have in common: a folder of the user's, an item for each
// file in it, and the file's own switch, which the item's check mark shows. The date of the folder
// tells whether anything has changed.

#include <optional>
#include <span>
#include <string>

#include "src/base/Instance.h"

namespace quorvane {

/// Byte 0 of the resource: nonzero where the file is on.
inline constexpr FourCharCode kFileSwitch = "cswt"_4cc;
inline constexpr std::int16_t kFileSwitchID = 0;

struct FileSubmenu {
  std::uint32_t head;       ///< command id
  std::uint32_t firstItem;  ///< number of the first file's item; the others follow
  /// None: the file gets no item, but keeps its number.
  std::optional<std::u16string> (*titleOf)(Instance& instance, const FSRef& file);
  bool (*isOn)(Instance& instance, const FSRef& file);
};

/// From the application support folder on: true, and `folder` is the user's own.
bool findQuorvaneFolder(Instance& instance, FSRef& folder);
/// By name; null where the folder isn't there.
Handle filesOf(Instance& instance, std::uint32_t kind, const FSRef& folder);
/// Fills the submenu anew, at most 999 items; null: with none. True where it has items now.
bool showFiles(Instance& instance, const FileSubmenu& submenu, const Handle& files);

/// As Mac OS Roman has it, without a terminator; none where that has no place for it.
std::optional<std::string> nameOfFile(Instance& instance, const FSRef& file);
/// The UTF-8 text of these bytes; none where they aren't any.
std::optional<std::u16string> titleOfName(Instance& instance, std::string_view name);

/// `otherwise` where the file has no such resource or can't be opened.
bool switchOfFile(Instance& instance, const FSRef& file, bool otherwise);
/// 1 where the date of the folder is `seen`. Otherwise `seen` becomes it, if it is a folder: 0.
std::int32_t isDateUnchanged(Instance& instance, const FSRef& folder, UTCDateTime& seen);
/// Gives `folder` a date that it can't have been seen with: a second from now. The rest of what is
/// written is what the catalogue says of `file`; nothing where that can't be read.
void moveDateOfFolder(Instance& instance, const FSRef& file, const FSRef& folder);

}  // namespace quorvane
