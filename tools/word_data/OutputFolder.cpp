#include "tools/word_data/OutputFolder.h"

#include <fcntl.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace quorvane::word_data {
namespace {

namespace fs = std::filesystem;

// Exchanges two folders at once; false where the file system can't.
bool exchange(const fs::path& one, const fs::path& other) {
  return renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
}

fs::path beside(const fs::path& path, std::string_view ending) {
  fs::path result = path;
  result += ending;
  return result;
}

}  // namespace

OutputFolder::OutputFolder(const fs::path& path)
    : path_(fs::absolute(path).lexically_normal()), gathering_(beside(path_, ".new")) {
  fs::remove_all(gathering_);
  fs::create_directories(gathering_);
}

OutputFolder::~OutputFolder() {
  std::error_code error;
  fs::remove_all(gathering_, error);
}

void OutputFolder::write(std::string_view name, std::string_view bytes) const {
  const fs::path path = gathering_ / name;
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error(path.string() + ": can't be written");
}

void OutputFolder::finish() {
  if (!fs::exists(path_)) return fs::rename(gathering_, path_);
  if (exchange(gathering_, path_)) return;
  const fs::path old = beside(path_, ".old");
  fs::rename(path_, old);
  fs::rename(gathering_, path_);
  fs::remove_all(old);
}

}  // namespace quorvane::word_data
