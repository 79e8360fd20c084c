// The files by which processes of the family announce themselves, and their names.

#include <string_view>

#include "fuzz/Target.h"
#include "hosts/desktop/Announcement.h"

namespace quorvane::fuzz {
namespace {

void checkContent(std::string_view content) {
  const auto process = desktop::parseAnnouncement(content);
  if (!process) return;
  const auto written = desktop::formatAnnouncement(*process);
  require(written && *written == content, "only what we would write is accepted");
}

void checkName(std::string_view name) {
  const auto pid = desktop::pidOfAnnouncementFile(name);
  if (!pid) return;
  require(*pid > 0 && desktop::announcementFileName(*pid) == name, "a name has one process id");
}

}  // namespace

void run(Bytes bytes) {
  const std::string_view text = textOf(bytes);
  checkContent(text);
  checkName(text.substr(0, text.find('\n')));
}

}  // namespace quorvane::fuzz
