#pragma once
// How an application of the family says that it runs: a small file of this form, each line ended by
// a line feed, in exactly this order and nothing else:
//
//   quorvane-process 1
//   pid=4711
//   serial=1:4711
//   name=Quorvane
//   signature=QVPX
//   type=APPL
//   bundle=com.tallowmere.quorvane
//
// The file is called PID.process. Pure text work: no file is touched here.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/MacTypes.h"

namespace quorvane::desktop {

struct Announcement {
  std::string name;                     ///< 1 to 63 printable ASCII characters
  FourCharCode signature = "????"_4cc;  ///< "????": it has no creator code
  FourCharCode type = "APPL"_4cc;       ///< both of printable ASCII characters
  std::string bundleIdentifier;         ///< up to 255 characters; may be empty
  bool operator==(const Announcement&) const = default;
};

struct AnnouncedProcess {
  std::int32_t pid = 0;
  Announcement announcement;
};

inline constexpr std::size_t kAnnouncementSizeLimit = 1024;

/// High word 1, low word the process id.
ProcessSerialNumber serialNumberOf(std::int32_t pid);

/// "4711.process".
std::string announcementFileName(std::int32_t pid);
/// The process id in such a name; empty for any other name.
std::optional<std::int32_t> pidOfAnnouncementFile(std::string_view fileName);

/// Empty where a field breaks its rule above.
std::optional<std::string> formatAnnouncement(const AnnouncedProcess& process);
/// Reads foreign bytes: empty for anything but the form above.
std::optional<AnnouncedProcess> parseAnnouncement(std::string_view content);

}  // namespace quorvane::desktop
