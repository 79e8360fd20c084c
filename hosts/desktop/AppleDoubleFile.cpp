#include "hosts/desktop/AppleDoubleFile.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/FileLock.h"
#include "hosts/desktop/PlainFile.h"

namespace quorvane::desktop {
namespace {

std::string beside(const std::filesystem::path& file) {
  return resources::appleDoublePath(file.native());
}

[[noreturn]] void fail(const std::filesystem::path& file, std::string_view reason) {
  throw std::runtime_error(file.string().append(": ").append(reason));
}

template <class Value>
Value valueOf(const std::filesystem::path& file, resources::Outcome<Value> outcome) {
  if (!outcome) fail(file, outcome.fault);
  return std::move(*outcome.value);
}

}  // namespace

std::shared_ptr<void> lockAppleDouble(const std::filesystem::path& file,
                                      std::chrono::milliseconds patience) {
  const std::string path = beside(file).append(".lock");
  auto lock = std::make_shared<Descriptor>(
      open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY, 0600));
  if (!lock->valid() || !lockInTime(lock->get(), patience)) return nullptr;
  return lock;
}

std::optional<resources::Bytes> readAppleDoubleFile(const std::filesystem::path& file) {
  auto content = readPlainFile(beside(file), resources::kLargest);
  if (!content && errno == ENOENT) return resources::Bytes{};
  return content;
}

bool replaceAppleDoubleFile(const std::filesystem::path& file, resources::ByteView content) {
  const std::string_view text(reinterpret_cast<const char*>(content.data()), content.size());
  return writeFileAtomically(beside(file), text, Durability::Lasting);
}

void updateAppleDouble(const std::filesystem::path& file,
                       const std::function<void(resources::AppleDouble&)>& change) {
  const auto lock = lockAppleDouble(file, kCommandsPatience);
  if (lock == nullptr) fail(file, "another process writes it, or its folder can't be written");
  const auto bytes = readAppleDoubleFile(file);
  if (!bytes) fail(file, std::strerror(errno));
  resources::AppleDouble around = valueOf(file, resources::readAppleDouble(*bytes));
  change(around);
  const resources::Bytes content = valueOf(file, resources::writeAppleDouble(around));
  if (!replaceAppleDoubleFile(file, content)) fail(file, std::strerror(errno));
}

}  // namespace quorvane::desktop
