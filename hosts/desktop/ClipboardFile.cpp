#include "hosts/desktop/ClipboardFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>

#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/FileLock.h"
#include "hosts/desktop/PlainFile.h"

namespace quorvane::desktop {
namespace {

constexpr std::chrono::milliseconds kPatience{20};

bool isPresent(const std::filesystem::path& path) { return ::access(path.c_str(), F_OK) == 0; }

bool areOneFile(const std::filesystem::path& one, const std::filesystem::path& other) {
  std::error_code error;
  return std::filesystem::equivalent(one, other, error);
}

bool isEmpty(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::file_size(path, error) == 0;
}

std::optional<std::string> textOf(const std::filesystem::path& path) {
  const auto bytes = readPlainFile(path, kClipboardLimit, Whose::Own);
  if (!bytes) return {};
  return std::string(bytes->begin(), bytes->end());
}

}  // namespace

std::optional<std::string> ClipboardFile::text() const { return textOf(file_); }

bool ClipboardFile::copy(std::string_view text) {
  const Descriptor held = lock();
  if (!put(text)) return false;
  ::unlink(before_.c_str());
  return true;
}

bool ClipboardFile::copyForCommand(std::string_view text) {
  const Descriptor held = lock();
  const bool hasEarlier = isPresent(before_);
  if (text.empty() && hasEarlier) standAgain(before_);
  if (text.empty()) return true;
  if (!hasEarlier && !keepFor(before_)) return false;
  if (put(text)) return true;
  standAgain(before_);
  return false;
}

std::optional<std::string> ClipboardFile::takeCommandsCopy() {
  const Descriptor held = lock();
  if (!isPresent(before_)) return std::nullopt;
  auto copied = text();
  standAgain(before_);
  return copied;
}

bool ClipboardFile::lend(std::string_view text) {
  const Descriptor held = lock();
  endLoanUnderLock();
  ::unlink(lent_.c_str());
  if (isPresent(before_)) standAgain(before_);
  if (!keepFor(kept_)) return false;
  const bool isThere = put(text);
  if (isThere && ::link(file_.c_str(), lent_.c_str()) == 0) return true;
  standAgain(kept_);
  return isThere ? refuse(std::strerror(errno)) : false;
}

void ClipboardFile::endLoan() {
  const Descriptor held = lock();
  endLoanUnderLock();
}

std::optional<std::string> ClipboardFile::takeLent() {
  const Descriptor held = lock();
  auto lent = isPresent(before_) ? std::nullopt : textOf(lent_);
  if (!lent) return text();
  endLoanUnderLock();
  ::unlink(lent_.c_str());
  return lent;
}

void ClipboardFile::endLoanUnderLock() {
  if (areOneFile(file_, lent_)) {
    standAgain(kept_);
  } else if (areOneFile(before_, lent_)) {
    std::rename(kept_.c_str(), before_.c_str());
  }
  ::unlink(kept_.c_str());
}

Descriptor ClipboardFile::lock() const {
  Descriptor folder(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.valid()) lockInTime(folder.get(), kPatience);
  return folder;
}

bool ClipboardFile::put(std::string_view text) {
  if (text.size() > kClipboardLimit) return refuse("more than 8 MiB");
  if (writeFileAtomically(file_, text, Durability::UntilReboot)) return true;
  return refuse(std::strerror(errno));
}

bool ClipboardFile::keepFor(const std::filesystem::path& former) {
  if (::link(file_.c_str(), former.c_str()) == 0) return true;
  if (errno == ENOENT && writeFileAtomically(former, "", Durability::UntilReboot)) return true;
  return refuse(std::strerror(errno));
}

/// A rename of one file to itself under another name does nothing: the other name goes here.
void ClipboardFile::standAgain(const std::filesystem::path& former) {
  if (isEmpty(former) || std::rename(former.c_str(), file_.c_str()) != 0) ::unlink(file_.c_str());
  ::unlink(former.c_str());
}

bool ClipboardFile::refuse(std::string_view reason) {
  if (log_.enabled) log_.writeLine(std::string("clipboard: stays as it is: ").append(reason));
  return false;
}

}  // namespace quorvane::desktop
