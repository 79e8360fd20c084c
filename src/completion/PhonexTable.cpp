#include "src/completion/PhonexTable.h"

#include <vector>

namespace quorvane {
namespace {

constexpr FourCharCode kKind = "Phnx"_4cc;
enum Section : std::size_t { kCodes = 1, kWords = 3 };

constexpr std::size_t kOfCodes = 1;  // the codes are keys here
constexpr std::size_t kOfWords = 2;

}  // namespace

void PhonexGroupsReader::keyAt(std::size_t /*depth*/, std::string_view text) {
  finishCode();
  groups_.codes.add(text);
  inCode_ = true;
}

void PhonexGroupsReader::stringAt(std::size_t depth, std::string_view text) {
  if (depth == kOfWords) TextList::append(words_, text);
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

std::unique_ptr<FileData> PhonexTable::make(const PhonexGroups& groups, std::string_view key) {
  TextPile codes;
  TextPile words;
  for (const std::uint32_t index : groups.codes.sorted()) {
    codes.add(groups.codes[index]);
    words.add(groups.words[index]);
  }
  return Snapshot::make(kKind, key,
                        {asBytes(codes.bytes()), asBytes(codes.offsets()), asBytes(words.bytes()),
                         asBytes(words.offsets())});
}

PhonexTable::PhonexTable(std::unique_ptr<FileData> file, std::string_view key)
    : snapshot_(std::make_unique<Snapshot>(std::move(file), kKind, key)),
      codes_(*snapshot_, kCodes),
      words_(*snapshot_, kWords) {}

TextList PhonexTable::words(std::string_view code) const {
  const auto index = codes_.find(code);
  return index ? TextList(words_[*index]) : TextList();
}

}  // namespace quorvane
