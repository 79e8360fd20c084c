#include "hosts/desktop/AtomicFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>

#include "hosts/desktop/Descriptor.h"
#include "hosts/desktop/ProcessLiveness.h"

namespace quorvane::desktop {
namespace {

constexpr std::string_view kTemporaryEnd = ".new";

bool writeWhole(int file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(file, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

void syncFolder(const std::filesystem::path& path) {
  const Descriptor folder(open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.valid()) fsync(folder.get());
}

std::string temporaryStart(const std::filesystem::path& path) {
  return std::string(".").append(path.filename().native()).append(".");
}

/// The process whose temporary file of `path` bears this name; 0: none's.
std::int32_t writerOf(std::string_view name, const std::filesystem::path& path) {
  const std::string start = temporaryStart(path);
  if (!name.starts_with(start) || !name.ends_with(kTemporaryEnd)) return 0;
  name.remove_prefix(start.size());
  std::int32_t pid = 0;
  const char* const end = std::from_chars(name.data(), name.data() + name.size(), pid).ptr;
  return std::string_view(end, name.data() + name.size()) == kTemporaryEnd ? pid : 0;
}

/// What processes have left that were killed while they wrote `path`.
void removeLeftovers(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::directory_iterator each(path.parent_path(), error);
  for (; !error && each != end(each); each.increment(error)) {
    const std::int32_t writer = writerOf(each->path().filename().native(), path);
    if (writer > 0 && !isRunning(writer)) unlink(each->path().c_str());
  }
}

bool replace(const std::string& temporary, const std::filesystem::path& path, FileParts parts,
             Durability durability) {
  const Descriptor file(
      open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
  const auto write = [&file](std::string_view part) { return writeWhole(file.get(), part); };
  if (!file.valid() || !std::ranges::all_of(parts, write)) return false;
  const bool lasting = durability == Durability::Lasting;
  if (lasting && fsync(file.get()) != 0) return false;
  if (std::rename(temporary.c_str(), path.c_str()) != 0) return false;
  if (lasting) syncFolder(path);
  return true;
}

}  // namespace

bool writeFileAtomically(const std::filesystem::path& path, FileParts parts,
                         Durability durability) {
  removeLeftovers(path);
  const std::string name = temporaryStart(path) + std::to_string(getpid());
  const std::string temporary = (path.parent_path() / name).string().append(kTemporaryEnd);
  if (replace(temporary, path, parts, durability)) return true;
  const int error = errno;
  unlink(temporary.c_str());
  errno = error;
  return false;
}

bool saveFile(const std::filesystem::path& path, FileParts parts, Durability durability,
              quorvane::LogSink& log) {
  std::error_code error;
  std::filesystem::create_directories(path.parent_path(), error);
  if (!error && writeFileAtomically(path, parts, durability)) return true;
  const std::string reason = error ? error.message() : std::strerror(errno);
  if (log.enabled) log.writeLine(path.string() + ": can't be written: " + reason);
  return false;
}

}  // namespace quorvane::desktop
