// The files by which processes of the family announce themselves, and their names.

#include <string_view>

#include "fuzz/Law.h"
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
}  // namespace quorvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  quorvane::fuzz::checkContent(text);
  quorvane::fuzz::checkName(text.substr(0, text.find('\n')));
  return 0;
}
