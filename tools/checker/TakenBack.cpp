#include "tools/checker/TakenBack.h"

#include <algorithm>
#include <charconv>

#include "tools/corrections/Alphabet.h"

namespace quorvane::checker {

namespace {

constexpr std::uint32_t kForGood = 2;
/// Whoever takes back more than this wants no corrections.
constexpr std::size_t kMostEntries = 1000;

/// A word, or several with a blank between them.
bool isPassage(std::string_view text) {
  const std::size_t blank = text.find(' ');
  if (blank == std::string_view::npos) return corrections::isWord(text);
  return corrections::isWord(text.substr(0, blank)) && isPassage(text.substr(blank + 1));
}

}  // namespace

TakenBack::Entry TakenBack::entryFor(const std::string& typed) const {
  const std::string times = file_.text(typed, "times");
  Entry entry{typed, file_.text(typed, "replacement")};
  std::from_chars(times.data(), times.data() + times.size(), entry.times);
  return entry;
}

bool TakenBack::refuses(const std::string& typed, const std::string& replacement) const {
  if (thisSession_.contains({typed, replacement})) return true;
  const Entry entry = entryFor(typed);
  return entry.replacement == replacement && entry.times >= kForGood;
}

void TakenBack::learn(const std::string& typed, const std::string& replacement) {
  if (!isPassage(typed)) return;
  thisSession_.emplace(typed, replacement);
  const Entry before = entryFor(typed);
  if (before.times == 0 && file_.groups().size() >= kMostEntries) return;
  const std::uint32_t times = before.replacement == replacement ? before.times + 1 : 1;
  file_.setText(typed, "replacement", replacement);
  file_.setText(typed, "times", std::to_string(std::min(times, kForGood)));
  file_.save();
}

std::vector<TakenBack::Entry> TakenBack::entries() const {
  std::vector<Entry> entries;
  for (const std::string& group : file_.groups()) {
    Entry entry = entryFor(group);
    if (isPassage(group) && isPassage(entry.replacement)) {
      entries.push_back(std::move(entry));
    }
  }
  return entries;
}

void TakenBack::clear(const std::filesystem::path& configDirectory) {
  std::filesystem::remove(fileIn(configDirectory));
}

}  // namespace quorvane::checker
