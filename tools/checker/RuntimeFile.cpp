#include "tools/checker/RuntimeFile.h"

#include <unistd.h>

#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/PlainFile.h"

namespace quorvane::checker {

bool putRuntimeFile(const std::filesystem::path& file, const std::optional<std::string>& content) {
  if (content && desktop::writeFileAtomically(file, *content, desktop::Durability::UntilReboot)) {
    return true;
  }
  removeRuntimeFile(file);
  return false;
}

void removeRuntimeFile(const std::filesystem::path& file) { ::unlink(file.c_str()); }

std::optional<std::string> readRuntimeFile(const std::filesystem::path& file, std::size_t limit) {
  const auto bytes = desktop::readPlainFile(file, limit, desktop::Whose::Own);
  if (!bytes) return std::nullopt;
  return std::string(bytes->begin(), bytes->end());
}

}  // namespace quorvane::checker
