#include "hosts/memory/MemoryFiles.h"

#include <array>
#include <utility>

#include "hosts/marisa/SavedWordList.h"

namespace quorvane::memory {
namespace {

using Bytes = std::vector<std::uint8_t>;

class SharedData : public FileData {
 public:
  explicit SharedData(std::shared_ptr<const Bytes> content) : content_(std::move(content)) {}
  [[nodiscard]] std::span<const std::uint8_t> bytes() const override {
    return std::span(*content_).first(content_->size() - kReadableBehind);
  }

 private:
  std::shared_ptr<const Bytes> content_;
};

constexpr std::array<std::string_view, 12> kUsualWords{
    "and", "hello", "help", "of", "that", "the", "their", "there", "this", "to", "word", "words"};

std::string resourcePath(std::string_view fileName) {
  return std::string("/bundle/").append(fileName);
}

std::string folderOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

}  // namespace

MemoryFileManager::MemoryFileManager() {
  for (const auto& folder : {applicationSupportFolder, preferencesFolder, applicationsFolder}) {
    makeFolder(folder);
  }
}

std::optional<FileAttributes> MemoryFileManager::attributesOfItemAtPath(const std::string& path) {
  const auto file = files_.find(path);
  if (file == files_.end() || file->second.content == nullptr) return {};
  return file->second.attributes;
}

std::unique_ptr<FileData> MemoryFileManager::dataWithContentsOfFile(const std::string& path) {
  const auto file = files_.find(path);
  if (file == files_.end() || file->second.content == nullptr) return nullptr;
  if (readFails && readFails(path)) return nullptr;
  return std::make_unique<SharedData>(file->second.content);
}

std::unique_ptr<FileData> MemoryFileManager::dataWithContentsOfMappedFile(const std::string& path) {
  return dataWithContentsOfFile(path);
}

std::optional<std::u16string> MemoryFileManager::stringWithContentsOfFile(const std::string& path) {
  const auto data = dataWithContentsOfFile(path);
  if (data == nullptr) return {};
  return encoding_.initWithData(data->bytes(), NSStringEncoding::UTF8);
}

bool MemoryFileManager::writeToFile(const std::string& path,
                                    std::span<const std::span<const std::uint8_t>> parts) {
  if (writeFails) return false;
  const auto content = std::make_shared<Bytes>();
  for (const auto part : parts) content->insert(content->end(), part.begin(), part.end());
  makeFolder(folderOf(path));
  const FileAttributes attributes = newAttributes(content->size());
  content->resize(content->size() + FileData::kReadableBehind);
  files_[path] = {content, attributes};
  touchFolderOf(path);
  return true;
}

FileAttributes MemoryFileManager::newAttributes(std::size_t size) {
  const std::uint64_t change = ++changes_;
  return {.size = size,
          .modificationNanoseconds = static_cast<std::int64_t>(change) * 1'000'000,
          .systemFileNumber = change};
}

void MemoryFileManager::touchFolderOf(const std::string& path) {
  const auto folder = files_.find(folderOf(path));
  if (folder == files_.end()) return;
  folder->second.attributes.modificationNanoseconds = newAttributes(0).modificationNanoseconds;
}

void MemoryFileManager::put(const std::string& path, std::string_view content) {
  const bool fails = std::exchange(writeFails, false);
  const std::span<const std::uint8_t> bytes(reinterpret_cast<const std::uint8_t*>(content.data()),
                                            content.size());
  writeToFile(path, {&bytes, 1});
  writeFails = fails;
}

void MemoryFileManager::putResources(const std::string& path, resources::FinderInfo info,
                                     const resources::ResourceFork& fork) {
  resources::AppleDouble file;
  file.setFinderInfo(info);
  file.contentOf(resources::kResourceForkEntry) = resources::writeResourceFork(fork).value.value();
  const Bytes bytes = resources::writeAppleDouble(file).value.value();
  put(resources::appleDoublePath(path),
      {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

void MemoryFileManager::changeResources(
    const std::string& path,
    const std::function<void(resources::FinderInfo&, resources::ResourceFork&)>& change) {
  const auto around = dataWithContentsOfFile(resources::appleDoublePath(path));
  const auto file =
      resources::readAppleDouble(around == nullptr ? resources::ByteView() : around->bytes());
  auto fork = resources::readResourceFork(file ? file.value->content(resources::kResourceForkEntry)
                                               : resources::ByteView());
  if (!fork) fork.value.emplace();
  auto info = file ? file.value->finderInfo() : resources::FinderInfo{};
  change(info, *fork.value);
  putResources(path, info, *fork.value);
}

void MemoryFileManager::makeFolder(const std::string& path) {
  if (path.empty() || files_.contains(path)) return;
  makeFolder(folderOf(path));
  files_[path] = {nullptr, newAttributes(0)};
  touchFolderOf(path);
}

void MemoryFileManager::remove(const std::string& path) {
  files_.erase(resources::appleDoublePath(path));
  files_.erase(path);
  std::erase_if(files_, [&](const auto& each) { return each.first.starts_with(path + "/"); });
  touchFolderOf(path);
}

void MemoryFileManager::rename(const std::string& from, const std::string& to) {
  Files renamed;
  const auto move = [&](const std::string& path, const std::string& name) {
    if (const auto file = files_.find(path); file != files_.end()) renamed[name] = file->second;
  };
  for (const auto& [path, file] : files_) {
    if (path.starts_with(from + "/")) renamed[to + path.substr(from.size())] = file;
  }
  move(from, to);
  move(resources::appleDoublePath(from), resources::appleDoublePath(to));
  remove(from);
  files_.merge(renamed);
  touchFolderOf(to);
}

/// Not in place: who has the file in hands keeps what it was.
void MemoryFileManager::damage(const std::string& path, std::size_t at, std::uint8_t byte) {
  Content& content = files_.at(path).content;
  content = std::make_shared<Bytes>(*content);
  content->at(at) = byte;
}

MemoryBundle::MemoryBundle(MemoryFileManager& files) : files_(files) { setWordList(kUsualWords); }

std::optional<std::string> MemoryBundle::pathForResource(std::string_view name,
                                                         std::string_view type) {
  std::string path = resourcePath(std::string(name).append(".").append(type));
  if (!files_.has(path)) return {};
  return path;
}

std::optional<std::string> MemoryBundle::pathForResource(std::string_view name,
                                                         std::string_view type,
                                                         std::string_view subdirectory) {
  return pathForResource(std::string(subdirectory).append("/").append(name), type);
}

std::optional<std::string> MemoryBundle::CFBundleGetBundleWithIdentifier(
    std::string_view identifier) {
  const auto bundle = bundles.find(identifier);
  if (bundle == bundles.end()) return {};
  return bundle->second;
}

std::optional<std::string> MemoryBundle::CFBundleCopySharedSupportURL(std::string_view identifier) {
  auto path = CFBundleGetBundleWithIdentifier(identifier);
  if (path) path->append("/SharedSupport");
  return path;
}

std::optional<std::string> MemoryBundle::CFBundleCopySharedSupportURL() {
  return CFBundleCopySharedSupportURL(kIdentifier);
}

void MemoryBundle::put(std::string_view fileName, std::string_view content) {
  files_.put(resourcePath(fileName), content);
}

void MemoryBundle::remove(std::string_view fileName) { files_.remove(resourcePath(fileName)); }

void MemoryBundle::setWordList(std::span<const std::string_view> words) {
  put(kWordList, savedWordList(words));
}

}  // namespace quorvane::memory
