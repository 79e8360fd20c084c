#include "tools/corrections/tuning/Reading.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "tools/checker/ForeignText.h"
#include "tools/checker/WordRules.h"

namespace quorvane::corrections {

namespace {

constexpr std::size_t kSessionText = 380;
constexpr std::size_t kDroppedAtOnce = 200;

bool isInWord(std::uint8_t byte) { return byte >= 128 || byte == '\'' || std::isalnum(byte) != 0; }

void addWord(Reading& reading, const checker::TextRecord& record) {
  const auto word = checker::endedWord(record);
  const auto bytes = std::span<const std::uint8_t>(record.text);
  if (!word || checker::endsInForeignText(bytes.first(word->start))) return;
  TextWord found{checker::spelling(bytes.subspan(word->start, word->end - word->start))};
  char& first = found.word.front();
  if (first >= 'A' && first <= 'Z') {
    first = static_cast<char>(first - 'A' + 'a');
    found.writing = word->opensSentence ? Writing::CapitalAtStart : Writing::Capital;
  }
  if (word->joined) found.writing = Writing::Joined;
  ++reading.checked[found];
}

}  // namespace

std::string fileText(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  if (!(text << stream.rdbuf())) throw std::runtime_error(file.string() + ": can't be read");
  return text.str();
}

Reading readWords(std::string_view text) {
  Reading reading;
  checker::TextRecord record;
  for (const char c : text) {
    const auto byte = static_cast<std::uint8_t>(c == '\n' ? '\r' : c);
    const bool endsWord = !record.text.empty() && isInWord(record.text.back()) && !isInWord(byte);
    record.text.push_back(byte);
    record.key = byte;
    if (record.text.size() >= kSessionText) {
      record.text.erase(record.text.begin(), record.text.begin() + kDroppedAtOnce);
    }
    if (!endsWord) continue;
    ++reading.words;
    addWord(reading, record);
  }
  return reading;
}

}  // namespace quorvane::corrections
