// What a launch goes by: launchers, records of starts, alias records, and what the user permits.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "fuzz/Target.h"
#include "hosts/desktop/ConsentFile.h"
#include "hosts/desktop/LaunchRecord.h"
#include "hosts/desktop/Launcher.h"
#include "hosts/resources/AliasRecord.h"

namespace quorvane::fuzz {
namespace {

struct NoLog : LogSink {
  void writeLine(std::string_view /*line*/) override {}
};

/// The name of a file in memory that holds just this.
std::string fileWith(std::string_view text) {
  static const int file = ::memfd_create("consent", MFD_CLOEXEC);
  require(::ftruncate(file, 0) == 0 && ::pwrite(file, text.data(), text.size(), 0) >= 0,
          "the file can be written");
  return "/proc/self/fd/" + std::to_string(file);
}

void checkConsent(std::string_view text) {
  NoLog log;
  const auto consent = desktop::ConsentFile(fileWith(text), log).of("a.b");
  if (!consent) return;
  const std::string_view word = *consent == desktop::Consent::Permit ? "permit" : "deny";
  require(text.find("612e62") != text.npos && text.find(word) != text.npos,
          "nobody has consented who isn't named with his word");
}

}  // namespace

void run(Bytes bytes) {
  const std::string_view text = textOf(bytes);
  checkConsent(text);
  if (const auto launcher = desktop::parseLauncher(text)) {
    require(desktop::formatLauncher(*launcher.value) == text, "only what we would write is read");
  }
  const auto starts = desktop::parseLaunchStarts(text);
  require(desktop::parseLaunchStarts(desktop::formatLaunchStarts(starts)) == starts,
          "a record says the same when it is written again");
  for (const auto& start : starts) require(start.pid > 0, "a process is one that can be signalled");
  if (const auto path = resources::pathOfAlias(bytes)) {
    auto written = resources::aliasRecord(*path);
    std::copy_n(bytes.begin(), 4, written.begin());  // the user type, which nobody reads
    require(std::ranges::equal(written, bytes),
            "an alias is no longer and no shorter than its path");
  }
}

}  // namespace quorvane::fuzz
