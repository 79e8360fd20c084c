#include "hosts/desktop/PlainFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace quorvane::desktop {

namespace {

/// 0: it may be read.
int refusalOf(const struct stat& status, std::uint64_t largest, Whose whose) {
  if (whose == Whose::Own && status.st_uid != geteuid()) return EPERM;
  if (static_cast<std::uint64_t>(status.st_size) > largest) return EFBIG;
  return S_ISREG(status.st_mode) ? 0 : EINVAL;
}

}  // namespace

PlainFile openPlainFile(const std::string& path, std::uint64_t largest, Whose whose) {
  const int refusal = whose == Whose::Own ? O_NOFOLLOW : 0;
  Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | refusal));
  struct stat status {};
  if (!file.valid() || fstat(file.get(), &status) != 0) return {};
  if (const int error = refusalOf(status, largest, whose)) {
    file.close();
    errno = error;
    return {};
  }
  return {std::move(file), static_cast<std::size_t>(status.st_size)};
}

std::string refusalText(int error) {
  switch (error) {
    case EPERM:
      return "belongs to another user";
    case ELOOP:
      return "is a link";
    case EFBIG:
      return "is too large";
    case EINVAL:
      return "is no plain file";
    default:
      return std::strerror(error);
  }
}

std::optional<std::size_t> readWhole(int file, std::uint8_t* out, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = read(file, out + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return {};
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

std::optional<std::vector<std::uint8_t>> readPlainFile(const std::string& path,
                                                       std::uint64_t largest, Whose whose) {
  const PlainFile opened = openPlainFile(path, largest, whose);
  if (!opened.file.valid()) return {};
  std::vector<std::uint8_t> content(opened.size);
  const auto size = readWhole(opened.file.get(), content.data(), content.size());
  if (!size) return {};
  content.resize(*size);
  return content;
}

}  // namespace quorvane::desktop
