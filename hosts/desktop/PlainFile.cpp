#include "hosts/desktop/PlainFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace quorvane::desktop {

PlainFile openPlainFile(const std::string& path, std::uint64_t largest, Links links) {
  const int refusal = links == Links::Refuse ? O_NOFOLLOW : 0;
  Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | refusal));
  struct stat status {};
  if (!file.valid() || fstat(file.get(), &status) != 0) return {};
  const auto size = static_cast<std::uint64_t>(status.st_size);
  const bool fits = size <= largest;
  if (!fits || !S_ISREG(status.st_mode)) {
    file.close();
    errno = fits ? EINVAL : EFBIG;
    return {};
  }
  return {std::move(file), static_cast<std::size_t>(size)};
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
                                                       std::uint64_t largest, Links links) {
  const PlainFile opened = openPlainFile(path, largest, links);
  if (!opened.file.valid()) return {};
  std::vector<std::uint8_t> content(opened.size);
  const auto size = readWhole(opened.file.get(), content.data(), content.size());
  if (!size) return {};
  content.resize(*size);
  return content;
}

}  // namespace quorvane::desktop
