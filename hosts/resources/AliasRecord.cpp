#include "hosts/resources/AliasRecord.h"

namespace quorvane::resources {
namespace {

constexpr std::size_t kSizeOffset = 4;
constexpr std::size_t kAliasHead = 6;

bool canBePath(std::string_view path) {
  return !path.empty() && path.size() <= kLongestAliasPath &&
         path.find('\0') == std::string_view::npos;
}

}  // namespace

std::optional<Bytes> aliasTo(std::string_view path) {
  if (!canBePath(path)) return {};
  Bytes record(kSizeOffset);
  appendNumber(record, static_cast<std::uint16_t>(kAliasHead + path.size()));
  record.insert(record.end(), path.begin(), path.end());
  return record;
}

std::optional<std::string> pathOfAlias(ByteView record) {
  if (record.size() < kAliasHead) return {};
  const auto size = bigEndianNumber<std::uint16_t>(record.subspan(kSizeOffset));
  if (size < kAliasHead || size > record.size()) return {};
  const ByteView text = record.subspan(kAliasHead, size - kAliasHead);
  std::string path(text.begin(), text.end());
  if (!canBePath(path)) return {};
  return path;
}

}  // namespace quorvane::resources
