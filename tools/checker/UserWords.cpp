#include "tools/checker/UserWords.h"

#include <algorithm>

#include "tools/checker/UserLines.h"

namespace quorvane::checker {

namespace {

constexpr std::size_t kLongestWord = 63;

bool isPrintable(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte > ' ' && byte != 127;
}

/// Words are asked for with straight ones.
std::string withStraightApostrophes(std::string_view word) {
  constexpr std::string_view kCurly = "\u2019";
  std::string straight(word);
  for (std::size_t at = 0; (at = straight.find(kCurly, at)) != straight.npos; ++at) {
    straight.replace(at, kCurly.size(), "'");
  }
  return straight;
}

}  // namespace

std::size_t readWords(std::string_view file, WordSet& words) {
  return forEachLine(file, [&words](std::string_view line) {
    if (line.size() > kLongestWord || !std::ranges::all_of(line, isPrintable)) return false;
    words.insert(withStraightApostrophes(line));
    return true;
  });
}

}  // namespace quorvane::checker
