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
  explicit OwnedBytes(std::size_t size) : bytes_(size) {}
  [[nodiscard]] Bytes bytes() const override { return bytes_; }
  std::uint8_t* data() { return bytes_.data(); }

 private:
  std::vector<std::uint8_t> bytes_;
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
  Head head;
  std::vector<Extent> directory;
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
  std::uint8_t* const start = file->data();
  std::memcpy(start + sizeof(Head), directory.data(), directory.size() * sizeof(Extent));
  for (std::size_t i = 0; i < all.size(); ++i) {
    std::copy(all[i].begin(), all[i].end(), start + head.bodyOffset + directory[i].offset);
  }
  for (std::size_t page = 0; page < pages; ++page) {
    const Bytes body = file->bytes().subspan(head.bodyOffset);
    const std::uint64_t sum = sumOfPage(body, page);
    std::memcpy(start + sumsOffset + page * sizeof(sum), &sum, sizeof(sum));
  }
  std::memcpy(start, &head, sizeof(head));
  head.sum = sumBeforeBody(file->bytes(), head.bodyOffset);
  std::memcpy(start, &head, sizeof(head));
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
