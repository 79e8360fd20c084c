#include "src/completion/FrequencyTable.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "src/completion/TextList.h"

namespace quorvane {
namespace {

constexpr std::size_t kOfWords = 1;    // the words' names are keys here
constexpr std::size_t kOfMembers = 2;  // what is known of a word
constexpr std::size_t kOfLines = 3;

using Int = std::numeric_limits<std::int32_t>;

}  // namespace

std::int32_t intValue(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  std::int64_t number = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9') break;
    number = std::min<std::int64_t>(number * 10 + (digit - '0'), std::int64_t{Int::max()} + 1);
  }
  const std::int64_t value = negative ? -number : std::min<std::int64_t>(number, Int::max());
  return static_cast<std::int32_t>(value);
}

std::int32_t intValue(double number) {
  if (number != number) return 0;
  return static_cast<std::int32_t>(std::clamp(number, double{Int::min()}, double{Int::max()}));
}

void FrequencyTableReader::keyAt(std::size_t depth, std::string_view text) {
  if (depth == kOfMembers) return startMember(text);
  finishWord();
  table_.words.add(text);
  inWord_ = true;
  member_ = Member::Other;
}

void FrequencyTableReader::startMember(std::string_view name) {
  member_ = Member::Other;
  if (name == "frequency") {
    member_ = Member::Frequency;
    frequency_ = 0;
  } else if (name == "translation") {
    member_ = Member::Translation;
    translation_.clear();
  } else if (name == "ipa") {
    member_ = Member::Ipa;
    ipa_.clear();
  }
}

void FrequencyTableReader::stringAt(std::size_t depth, std::string_view text) {
  if (depth == kOfLines && member_ == Member::Translation) TextList::append(translation_, text);
  if (depth != kOfMembers) return;
  if (member_ == Member::Frequency) frequency_ = intValue(text);
  if (member_ == Member::Ipa) ipa_ = text;
}

void FrequencyTableReader::integerAt(std::size_t depth, std::int64_t number) {
  if (depth == kOfMembers && member_ == Member::Frequency) {
    frequency_ = static_cast<std::int32_t>(number);
  }
}

void FrequencyTableReader::realAt(std::size_t depth, double number) {
  if (depth == kOfMembers && member_ == Member::Frequency) frequency_ = intValue(number);
}

void FrequencyTableReader::leave(std::size_t depth) {
  if (depth == kOfWords) finishWord();
}

void FrequencyTableReader::finishWord() {
  if (!inWord_) return;
  table_.frequencies.push_back(frequency_);
  if (!ipa_.empty() || !translation_.empty()) {
    TextList::end(ipa_);
    ipa_ += translation_;
  }
  table_.annotations.add(ipa_);
  inWord_ = false;
  frequency_ = 0;
  ipa_.clear();
  translation_.clear();
}

}  // namespace quorvane
