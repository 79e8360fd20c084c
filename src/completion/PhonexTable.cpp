#include "src/completion/PhonexTable.h"

namespace quorvane {
namespace {

enum Section : std::size_t { kCodes = 1, kSpellings = 3 };

constexpr std::size_t kOfCodes = 1;  // the codes are keys here
constexpr std::size_t kOfSpellings = 2;

}  // namespace

void PhonexGroupsReader::keyAt(std::size_t /*depth*/, std::string_view text) {
  finishCode();
  groups_.codes.add(text);
  inCode_ = true;
}

void PhonexGroupsReader::stringAt(std::size_t depth, std::string_view text) {
  if (depth == kOfSpellings) TextList::append(words_, text);
}

void PhonexGroupsReader::leave(std::size_t depth) {
  if (depth == kOfCodes) finishCode();
}

void PhonexGroupsReader::finishCode() {
  if (!inCode_) return;
  groups_.words.add(words_);
  words_.clear();
  inCode_ = false;
}

PhonexGroups PhonexGroups::sorted() const {
  PhonexGroups result;
  for (const std::uint32_t index : codes.sorted()) {
    result.codes.add(codes[index]);
    result.words.add(words[index]);
  }
  return result;
}

std::vector<std::span<const std::uint8_t>> PhonexGroups::sections() const {
  return {asBytes(codes.bytes()), asBytes(codes.offsets()), asBytes(words.bytes()),
          asBytes(words.offsets())};
}

PhonexTable::PhonexTable(std::unique_ptr<FileData> file, std::string_view key)
    : snapshot_(std::make_unique<Snapshot>(std::move(file), PhonexGroups::kKind, key)),
      codes_(*snapshot_, kCodes),
      words_(*snapshot_, kSpellings) {}

TextList PhonexTable::words(std::string_view code) const {
  const auto index = codes_.find(code);
  return index ? TextList(words_[*index]) : TextList();
}

}  // namespace quorvane
