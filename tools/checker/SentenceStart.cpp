#include "tools/checker/SentenceStart.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "tools/checker/MacRoman.h"
#include "tools/corrections/Letters.h"

namespace quorvane::checker {

namespace {

using Bytes = std::span<const std::uint8_t>;

bool closes(const TextRecord& record, std::uint8_t byte) {
  return isOneOf("\"')]}", byte) ||
         (record.smartCharacters && (byte == kRightDoubleQuote || byte == kRightSingleQuote));
}

/// The last full stop of letters that have one each.
bool endsAbbreviation(Bytes text) {
  const std::size_t size = text.size();
  return size >= 3 && text[size - 1] == '.' && isLetter(text[size - 2]) && text[size - 3] == '.';
}

}  // namespace

bool startsSentence(const TextRecord& record) {
  Bytes text(record.text);
  if (text.empty() || record.key != text.back() || !isOneOf(" \t\r", record.key)) return false;
  do {
    text = text.first(text.size() - 1);
  } while (!text.empty() && closes(record, text.back()));
  return !text.empty() && isOneOf(".?!", text.back()) && !endsAbbreviation(text);
}

}  // namespace quorvane::checker
