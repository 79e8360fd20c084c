#include "hosts/desktop/ClipboardFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/PlainFile.h"

namespace quorvane::desktop {
namespace {

std::optional<struct stat> statusOf(const std::filesystem::path& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  return status;
}

}  // namespace

std::optional<std::string> ClipboardFile::text() const {
  if (!statusOf(file_)) return {};
  const auto bytes = readPlainFile(file_, kClipboardLimit);
  if (!bytes) return {};
  return std::string(bytes->begin(), bytes->end());
}

ClipboardFile::Edition ClipboardFile::edition() const {
  const auto status = statusOf(file_);
  if (!status) return {};
  return {status->st_ino, status->st_mtim.tv_sec, status->st_mtim.tv_nsec};
}

std::optional<std::chrono::nanoseconds> ClipboardFile::age() const {
  const auto status = statusOf(file_);
  timespec now{};
  if (!status || ::clock_gettime(CLOCK_REALTIME, &now) != 0) return {};
  return std::chrono::seconds(now.tv_sec - status->st_mtim.tv_sec) +
         std::chrono::nanoseconds(now.tv_nsec - status->st_mtim.tv_nsec);
}

bool ClipboardFile::replace(std::string_view text, const std::filesystem::path& former) {
  const bool fits = text.size() <= kClipboardLimit;
  if (fits) {
    ::unlink(former.c_str());
    ::link(file_.c_str(), former.c_str());
  }
  if (fits && writeFileAtomically(file_, text, Durability::UntilReboot)) return true;
  const std::string reason = fits ? std::strerror(errno) : "more than 8 MiB";
  if (log_.enabled) log_.writeLine("clipboard: stays as it is: " + reason);
  return false;
}

/// A rename of one file to itself under another name does nothing: the other name goes here.
void ClipboardFile::standAgain(const std::filesystem::path& former) {
  if (std::rename(former.c_str(), file_.c_str()) != 0) ::unlink(file_.c_str());
  ::unlink(former.c_str());
}

}  // namespace quorvane::desktop
