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
#include "hosts/desktop/PrivateFolders.h"
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

/// What processes have left that were killed while they wrote `path`.
void removeLeftovers(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::directory_iterator each(path.parent_path(), error);
  for (; !error && each != end(each); each.increment(error)) {
    const std::string name = each->path().filename();
    const auto temporary = temporaryOf(name);
    if (!temporary || temporary->target != path.filename().native()) continue;
    if (!isRunning(temporary->writer)) unlink(each->path().c_str());
  }
}

bool replace(const std::string& temporary, const std::filesystem::path& path, FileParts parts,
             Durability durability) {
  const Descriptor file(
      open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
  const auto write = [&file](std::string_view part) { return writeWhole(file.get(), part); };
  if (!file.valid() || !std::ranges::all_of(parts, write)) return false;
  const bool lasting = durability == Durability::Lasting;
  if (lasting && fsync(file.get()) != 0) return false;
  if (std::rename(temporary.c_str(), path.c_str()) != 0) return false;
  if (lasting) syncFolder(path);
  return true;
}

}  // namespace

std::optional<Temporary> temporaryOf(std::string_view name) {
  if (!name.starts_with('.') || !name.ends_with(kTemporaryEnd)) return {};
  const std::string_view all = name.substr(1, name.size() - 1 - kTemporaryEnd.size());
  const std::size_t dot = all.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return {};
  const char* const end = all.data() + all.size();
  std::int32_t pid = 0;
  const auto result = std::from_chars(all.data() + dot + 1, end, pid);
  if (result.ec != std::errc() || result.ptr != end || pid <= 0) return {};
  return Temporary{all.substr(0, dot), pid};
}

bool writeFileAtomically(const std::filesystem::path& path, FileParts parts,
                         Durability durability) {
  removeLeftovers(path);
  const std::string name = "." + path.filename().native() + "." + std::to_string(getpid());
  const std::string temporary = (path.parent_path() / name).string().append(kTemporaryEnd);
  unlink(temporary.c_str());  // a leftover of another process with our id
  if (replace(temporary, path, parts, durability)) return true;
  const int error = errno;
  unlink(temporary.c_str());
  errno = error;
  return false;
}

bool saveFile(const std::filesystem::path& path, FileParts parts, Durability durability,
              quorvane::LogSink& log) {
  std::string trouble;
  try {
    makePrivateFolders(path.parent_path());
    if (writeFileAtomically(path, parts, durability)) return true;
    trouble = path.string() + ": can't be written: " + std::strerror(errno);
  } catch (const std::exception& failure) {
    trouble = failure.what();
  }
  if (log.enabled) log.writeLine(trouble);
  return false;
}

}  // namespace quorvane::desktop
