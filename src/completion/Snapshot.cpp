#include "src/completion/Snapshot.h"

#include <algorithm>
#include <array>
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
constexpr std::size_t kPageSize = Snapshot::kPageSize;
constexpr std::array<std::uint8_t, kPageSize> kZeros{};

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
  explicit OwnedBytes(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}
  [[nodiscard]] Bytes bytes() const override { return bytes_; }

 private:
  std::vector<std::uint8_t> bytes_;
};

constexpr std::size_t roundUp(std::size_t size, std::size_t unit) {
  return (size + unit - 1) / unit * unit;
}

/// The page of `bytes` at `offset`, with zeros behind it where it isn't whole.
std::uint64_t sumOfPage(Bytes bytes, std::size_t offset) {
  const Bytes rest = bytes.subspan(offset);
  if (rest.size() >= kPageSize) return checksum(rest.first(kPageSize));
  std::array<std::uint8_t, kPageSize> page{};
  std::ranges::copy(rest, page.begin());
  return checksum(page);
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

NewSnapshot::NewSnapshot(FourCharCode kind, std::string_view key, std::span<const Bytes> sections)
    : key_(key) {
  parts_ = {Bytes()};  // what comes before the body, once it is known
  Head head;
  std::vector<Extent> directory;
  std::vector<std::uint64_t> sums;
  const auto add = [&](Bytes section) {
    const std::size_t size = roundUp(section.size(), kPageSize);
    directory.push_back({head.bodySize, section.size()});
    head.bodySize += size;
    for (std::size_t at = 0; at < size; at += kPageSize) sums.push_back(sumOfPage(section, at));
    parts_.push_back(section);
    parts_.push_back(Bytes(kZeros).first(size - section.size()));
  };
  add(asBytes(key_));
  for (const Bytes section : sections) add(section);
  head.kind = kind;
  head.sections = static_cast<std::uint32_t>(directory.size());
  const std::size_t sumsOffset = sizeof(head) + asBytes(directory).size();
  head.bodyOffset = roundUp(sumsOffset + asBytes(sums).size(), kPageSize);

  beforeBody_.resize(head.bodyOffset);
  std::ranges::copy(asBytes(directory), &beforeBody_[sizeof(head)]);
  std::ranges::copy(asBytes(sums), &beforeBody_[sumsOffset]);
  std::memcpy(beforeBody_.data(), &head, sizeof(head));
  head.sum = sumBeforeBody(beforeBody_, head.bodyOffset);
  std::memcpy(beforeBody_.data(), &head, sizeof(head));
  parts_.front() = beforeBody_;
}

std::unique_ptr<FileData> NewSnapshot::joined() const {
  std::vector<std::uint8_t> bytes;
  for (const Bytes part : parts_) bytes.insert(bytes.end(), part.begin(), part.end());
  return std::make_unique<OwnedBytes>(std::move(bytes));
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
  require(std::ranges::equal(section(kKeySection), asBytes(key)), "made of something else");
}

void Snapshot::checkPage(std::size_t page) const {
  std::uint64_t sum = 0;
  std::memcpy(&sum, pageSums_.data() + page * sizeof(sum), sizeof(sum));
  require(sum == sumOfPage(body_, page * kPageSize), "a damaged page");
  checked_[page] = 1;
}

}  // namespace quorvane
