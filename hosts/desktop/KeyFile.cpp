#include "hosts/desktop/KeyFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "hosts/desktop/AtomicFile.h"
#include "hosts/desktop/PlainFile.h"

namespace quorvane::desktop {
namespace {

struct FreeText {
  void operator()(void* text) const { g_free(text); }
};
using Text = std::unique_ptr<char, FreeText>;

struct FreeError {
  void operator()(GError* error) const { g_error_free(error); }
};

constexpr std::uint64_t kLargest = 1 << 20;

/// What is wrong with it; empty: nothing.
std::string load(GKeyFile& file, const std::vector<std::uint8_t>& content) {
  const auto* const text = reinterpret_cast<const char*>(content.data());
  GError* raw = nullptr;
  if (g_key_file_load_from_data(&file, content.empty() ? "" : text, content.size(),
                                G_KEY_FILE_KEEP_COMMENTS, &raw)) {
    return {};
  }
  return std::unique_ptr<GError, FreeError>(raw)->message;
}

}  // namespace

KeyFile::KeyFile(std::filesystem::path path, quorvane::LogSink& log)
    : path_(std::move(path)), log_(log), file_(g_key_file_new()) {
  const auto content = readPlainFile(path_, kLargest);
  if (!content && errno == ENOENT) return;
  const std::string fault = content ? load(*file_, *content) : std::strerror(errno);
  damaged_ = !fault.empty();
  if (!damaged_) return;
  file_.reset(g_key_file_new());
  if (log_.enabled) log_.writeLine(path_.string() + ": taken as empty: " + fault);
}

bool KeyFile::boolean(const std::string& group, const std::string& key) const {
  return g_key_file_get_boolean(file_.get(), group.c_str(), key.c_str(), nullptr) != FALSE;
}

bool KeyFile::has(const std::string& group, const std::string& key) const {
  return g_key_file_has_key(file_.get(), group.c_str(), key.c_str(), nullptr) != FALSE;
}

std::string KeyFile::text(const std::string& group, const std::string& key) const {
  const Text value(g_key_file_get_string(file_.get(), group.c_str(), key.c_str(), nullptr));
  return value == nullptr ? std::string() : std::string(value.get());
}

std::vector<std::string> KeyFile::groups() const {
  gsize count = 0;
  char** names = g_key_file_get_groups(file_.get(), &count);
  std::vector<std::string> result(names, names + count);
  g_strfreev(names);
  return result;
}

void KeyFile::setBoolean(const std::string& group, const std::string& key, bool value) {
  g_key_file_set_boolean(file_.get(), group.c_str(), key.c_str(), value ? TRUE : FALSE);
}

void KeyFile::setText(const std::string& group, const std::string& key, const std::string& value) {
  g_key_file_set_string(file_.get(), group.c_str(), key.c_str(), value.c_str());
}

void KeyFile::remove(const std::string& group, const std::string& key) {
  g_key_file_remove_key(file_.get(), group.c_str(), key.c_str(), nullptr);
}

void KeyFile::removeGroup(const std::string& group) {
  g_key_file_remove_group(file_.get(), group.c_str(), nullptr);
}

bool KeyFile::save() {
  if (damaged_ && std::rename(path_.c_str(), (path_.string() + ".damaged").c_str()) != 0 &&
      errno != ENOENT) {
    if (log_.enabled) log_.writeLine(path_.string() + " can't be put aside");
    return false;
  }
  damaged_ = false;
  gsize size = 0;
  const Text content(g_key_file_to_data(file_.get(), &size, nullptr));
  const std::string_view all(content.get(), size);
  return saveFile(path_, {&all, 1}, Durability::Lasting, log_);
}

}  // namespace quorvane::desktop
