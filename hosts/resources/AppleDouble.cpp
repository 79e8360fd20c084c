#include "hosts/resources/AppleDouble.h"

namespace quorvane::resources {
namespace {

constexpr std::uint32_t kMagic = 0x00051607;
constexpr std::uint32_t kVersion = 0x00020000;
constexpr std::size_t kFiller = 8;
constexpr std::size_t kCount = 24;
constexpr std::size_t kTable = 26;
constexpr std::size_t kTableEntry = 12;
constexpr std::size_t kFinderInfoSize = 32;
constexpr std::string_view kNamePrefix = "._";

AppleDouble::Entry readEntry(ByteView bytes, ByteView tableEntry) {
  const std::size_t offset = bigEndianNumber<std::uint32_t>(tableEntry, 4);
  const std::size_t length = bigEndianNumber<std::uint32_t>(tableEntry, 8);
  const ByteView content = checkedPart(bytes, offset, length, "an entry lies outside the file");
  return {bigEndianNumber<std::uint32_t>(tableEntry, 0), {content.begin(), content.end()}, offset};
}

AppleDouble read(ByteView bytes) {
  AppleDouble file;
  if (bytes.empty()) return file;
  require(bytes.size() <= kLargest, "the file is larger than 16 MiB");
  require(bytes.size() >= kTable, "the head is cut short");
  require(bigEndianNumber<std::uint32_t>(bytes, 0) == kMagic, "it is no AppleDouble file");
  require(bigEndianNumber<std::uint32_t>(bytes, 4) == kVersion, "it isn't of version 2");
  std::ranges::copy(bytes.subspan(kFiller, file.filler.size()), file.filler.begin());
  const std::size_t length = bigEndianNumber<std::uint16_t>(bytes, kCount) * kTableEntry;
  const ByteView table = checkedPart(bytes, kTable, length, "the table is cut short");
  std::vector<Stretch> stretches{{0, kTable + length}};
  for (std::size_t at = 0; at < length; at += kTableEntry) {
    const std::size_t from = bigEndianNumber<std::uint32_t>(table, at + 4);
    stretches.emplace_back(from, from + bigEndianNumber<std::uint32_t>(table, at + 8));
  }
  requireApart(std::move(stretches), "entries overlap");
  for (std::size_t at = 0; at < length; at += kTableEntry) {
    file.entries.push_back(readEntry(bytes, table.subspan(at, kTableEntry)));
  }
  return file;
}

/// Behind the Finder info, with offsets of their own from the start of the file.
bool hasAttributes(const AppleDouble::Entry& entry) {
  return entry.id == kFinderInfoEntry && entry.content.size() > kFinderInfoSize;
}

/// Where each entry goes, by its place in the table.
std::vector<std::size_t> offsetsOf(const AppleDouble& file) {
  std::vector<std::size_t> order(file.entries.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::ranges::stable_sort(order, {}, [&](std::size_t i) {
    const AppleDouble::Entry& entry = file.entries[i];
    const bool isNew = entry.offset == 0;
    return std::pair(entry.id == kResourceForkEntry, isNew ? kLargest : entry.offset);
  });
  std::vector<std::size_t> offsets(order.size());
  std::size_t end = kTable + order.size() * kTableEntry;
  for (const std::size_t i : order) {
    const AppleDouble::Entry& entry = file.entries[i];
    offsets[i] = std::max(end, entry.offset);
    require(entry.offset == 0 || offsets[i] == entry.offset || !hasAttributes(entry),
            "the file's attributes leave no room");
    end = offsets[i] + entry.content.size();
    require(end <= kLargest, "the file is larger than 16 MiB");
  }
  return offsets;
}

Bytes write(const AppleDouble& file) {
  require(file.entries.size() <= 0xFFFF, "the entries are too many");
  const std::vector<std::size_t> offsets = offsetsOf(file);
  Bytes out;
  appendNumber(out, kMagic);
  appendNumber(out, kVersion);
  append(out, file.filler);
  appendNumber(out, static_cast<std::uint16_t>(file.entries.size()));
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    appendNumber(out, file.entries[i].id);
    appendNumber(out, static_cast<std::uint32_t>(offsets[i]));
    appendNumber(out, static_cast<std::uint32_t>(file.entries[i].content.size()));
  }
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    const Bytes& content = file.entries[i].content;
    out.resize(std::max(out.size(), offsets[i] + content.size()));
    std::ranges::copy(content, out.begin() + static_cast<std::ptrdiff_t>(offsets[i]));
  }
  return out;
}

}  // namespace

ByteView AppleDouble::content(std::uint32_t id) const {
  const auto found = std::ranges::find(entries, id, &Entry::id);
  return found == entries.end() ? ByteView() : ByteView(found->content);
}

Bytes& AppleDouble::contentOf(std::uint32_t id) {
  const auto found = std::ranges::find(entries, id, &Entry::id);
  return found == entries.end() ? entries.emplace_back(Entry{id, {}, 0}).content : found->content;
}

FinderInfo AppleDouble::finderInfo() const {
  const ByteView info = content(kFinderInfoEntry);
  if (info.size() < 8) return {};
  return {bigEndianNumber<FourCharCode>(info, 0), bigEndianNumber<FourCharCode>(info, 4)};
}

void AppleDouble::setFinderInfo(FinderInfo info) {
  Bytes& content = contentOf(kFinderInfoEntry);
  content.resize(std::max(content.size(), kFinderInfoSize));
  putBigEndian(content, 0, info.fileType);
  putBigEndian(content, 4, info.fileCreator);
}

Outcome<AppleDouble> readAppleDouble(ByteView bytes) {
  return outcomeOf([&] { return read(bytes); });
}

Outcome<Bytes> writeAppleDouble(const AppleDouble& file) {
  return outcomeOf([&] { return write(file); });
}

FinderInfo finderInfoOf(ByteView file) {
  const Outcome<AppleDouble> outcome = readAppleDouble(file);
  return outcome ? outcome.value->finderInfo() : FinderInfo{};
}

std::string appleDoublePath(std::string_view path) {
  return std::string(path).insert(path.rfind('/') + 1, kNamePrefix);
}

bool isAppleDoubleName(std::string_view name) { return name.starts_with(kNamePrefix); }

}  // namespace quorvane::resources
