#include "src/completion/Snapshot.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "src/base/Checksum.h"

namespace quorvane {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint64_t kMagic = 0x746F'6873'7061'6E53;
constexpr std::uint32_t kVersion = 1;
/// Another number where bytes lie the other way round.
constexpr std::uint32_t kLayout = 0x0102'0304;
constexpr std::size_t kAlignment = 8;
constexpr std::size_t kKeySection = 0;

struct Head {
  std::uint64_t sum = 0;  ///< of all that follows, up to the body
  std::uint64_t magic = kMagic;
  std::uint32_t layout = kLayout;
  std::uint32_t version = kVersion;
  std::uint32_t kind = 0;
  std::uint32_t sections = 0;
  std::uint64_t bodyOffset = 0;
  std::uint64_t bodySize = 0;
};

struct Extent {
  std::uint64_t offset = 0;  ///< from the start of the body
  std::uint64_t size = 0;
};

class OwnedBytes : public FileData {
 public:
  explicit OwnedBytes(std::size_t size)
      : bytes_(std::make_unique_for_overwrite<std::uint8_t[]>(size)), size_(size) {}
  [[nodiscard]] Bytes bytes() const override { return {bytes_.get(), size_}; }
  /// The bytes, and zeros behind them up to `size`.
  void put(std::size_t offset, Bytes bytes, std::size_t size) {
    if (!bytes.empty()) std::memcpy(bytes_.get() + offset, bytes.data(), bytes.size());
    std::fill_n(bytes_.get() + offset + bytes.size(), size - bytes.size(), std::uint8_t{0});
  }

 private:
  std::unique_ptr<std::uint8_t[]> bytes_;
  std::size_t size_;
};

constexpr std::size_t roundUp(std::size_t size, std::size_t unit) {
  return (size + unit - 1) / unit * unit;
}

Bytes bytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::uint64_t sumBeforeBody(Bytes file, std::size_t bodyOffset) {
  return checksum(file.first(bodyOffset).subspan(sizeof(Head::sum)));
}

void require(bool condition, const char* otherwise) {
  if (!condition) throw DamagedSnapshot(otherwise);
}

Head checkedHead(Bytes file, FourCharCode kind) {
  Head head;
  require(file.size() >= sizeof(head), "no head");
  std::memcpy(&head, file.data(), sizeof(head));
  require(head.magic == kMagic && head.layout == kLayout && head.version == kVersion &&
              head.kind == kind,
          "another kind of file");
  require(head.bodyOffset >= sizeof(head) && head.bodyOffset <= file.size() &&
              head.bodyOffset % kAlignment == 0 && head.bodySize == file.size() - head.bodyOffset,
          "another size");
  require(head.sum == sumBeforeBody(file, head.bodyOffset), "damaged before the body");
  return head;
}

}  // namespace

std::unique_ptr<FileData> Snapshot::make(FourCharCode kind, std::string_view key,
                                         std::initializer_list<Bytes> sections) {
  std::vector<Bytes> all{bytesOf(key)};
  all.insert(all.end(), sections);
  std::vector<Extent> directory;
  Head head;
  for (const Bytes section : all) {
    directory.push_back({head.bodySize, section.size()});
    head.bodySize += roundUp(section.size(), kAlignment);
  }
  const std::size_t pages = roundUp(head.bodySize, kPageSize) / kPageSize;
  const std::size_t sumsOffset = sizeof(Head) + directory.size() * sizeof(Extent);
  head.kind = kind;
  head.sections = static_cast<std::uint32_t>(all.size());
  head.bodyOffset = roundUp(sumsOffset + pages * sizeof(std::uint64_t), kPageSize);

  auto file = std::make_unique<OwnedBytes>(head.bodyOffset + head.bodySize);
  for (std::size_t i = 0; i < all.size(); ++i) {
    file->put(head.bodyOffset + directory[i].offset, all[i], roundUp(all[i].size(), kAlignment));
  }
  std::vector<std::uint64_t> sums;
  for (std::size_t page = 0; page < pages; ++page) {
    sums.push_back(sumOfPage(file->bytes().subspan(head.bodyOffset), page));
  }
  file->put(sizeof(Head), asBytes(directory), sumsOffset - sizeof(Head));
  file->put(sumsOffset, asBytes(sums), head.bodyOffset - sumsOffset);
  file->put(0, asBytes(std::span(&head, 1)), sizeof(Head));
  head.sum = sumBeforeBody(file->bytes(), head.bodyOffset);
  file->put(0, asBytes(std::span(&head, 1)), sizeof(Head));
  return file;
}

Snapshot::Snapshot(std::unique_ptr<FileData> file, FourCharCode kind, std::string_view key)
    : file_(std::move(file)) {
  const Bytes bytes = file_->bytes();
  require(reinterpret_cast<std::uintptr_t>(bytes.data()) % kAlignment == 0, "badly placed");
  const Head head = checkedHead(bytes, kind);
  body_ = bytes.subspan(head.bodyOffset);
  const std::size_t pages = roundUp(body_.size(), kPageSize) / kPageSize;
  Bytes rest = bytes.first(head.bodyOffset).subspan(sizeof(head));
  require(head.sections <= rest.size() / sizeof(Extent), "no directory");
  for (std::uint32_t i = 0; i < head.sections; ++i) {
    Extent extent;
    std::memcpy(&extent, rest.data(), sizeof(extent));
    rest = rest.subspan(sizeof(extent));
    require(extent.offset <= body_.size() && extent.size <= body_.size() - extent.offset &&
                extent.offset % kAlignment == 0,
            "a section lies outside");
    sections_.push_back(body_.subspan(extent.offset, extent.size));
  }
  require(pages <= rest.size() / sizeof(std::uint64_t), "no page sums");
  pageSums_ = rest;
  checked_.resize(pages);
  check(section(kKeySection));
  require(std::ranges::equal(section(kKeySection), bytesOf(key)), "made of something else");
}

std::uint64_t Snapshot::sumOfPage(Bytes body, std::size_t page) {
  const Bytes rest = body.subspan(page * kPageSize);
  return checksum(rest.first(std::min(rest.size(), kPageSize)));
}

void Snapshot::checkPage(std::size_t page) const {
  std::uint64_t sum = 0;
  std::memcpy(&sum, pageSums_.data() + page * sizeof(sum), sizeof(sum));
  require(sum == sumOfPage(body_, page), "a damaged page");
  checked_[page] = 1;
}

}  // namespace quorvane
