// A text that somebody has copied, checked and measured, and the file that tells of a window.

#include <cmath>

#include "fuzz/Target.h"
#include "tools/checker/WindowFile.h"
#include "tools/checker/documents/CheckWindow.h"
#include "tools/checker/documents/Statistics.h"

namespace quorvane::fuzz {
namespace {

// Of each word with an e: an offer, or a passage of it and what stands before it.
class AnyWords : public checker::WordChoice {
 public:
  std::optional<std::string> replacement(const checker::TypedWord& /*word*/) override { return {}; }
  std::optional<checker::Passage> passage(const checker::TypedWord& word) override {
    const std::size_t back = word.spelt.size() % 3;
    if (word.spelt.find('o') == std::string::npos || word.before.size() < back) return {};
    return checker::Passage{word.before.size() - back, word.spelt, word.spelt + "n", true};
  }
  std::vector<std::string> offers(const checker::TypedWord& word) override {
    if (word.spelt.find('e') == std::string::npos) return {};
    return {word.spelt + "s", word.spelt.substr(1)};
  }
};

void checkWindow(const checker::WindowText& window) {
  const auto content = checker::formatWindowFile(window);
  require(content.has_value(), "each page has a written form");
  require(checker::parseWindowFile(*content) == window, "and is read as it was");
}

void checkText(const checker::DocumentText& text) {
  AnyWords words;
  checker::DocumentCheck check(text, words, {});
  while (check.step()) continue;
  std::size_t end = 0;
  for (const checker::Finding& finding : check.findings()) {
    require(finding.start >= end, "findings don't overlap");
    end = finding.start + finding.found.size();
    require(text.units.compare(finding.start, finding.found.size(), finding.found) == 0,
            "what is found stands there");
  }
  checker::CheckWindow window(u"Check", check, false);
  checkWindow(window.shown());
  while (window.press(U's') == checker::WindowOutcome::StaysOpen) {
    if (check.findings().empty()) break;
    checkWindow(window.shown());
  }
  require(window.textToPaste() == text.units, "what is skipped stays");
  require(!std::isnan(checker::readingEase(checker::statisticsOf(text.units))), "a number");
}

}  // namespace

void run(Bytes bytes) {
  if (const auto text = checker::readDocumentText(textOf(bytes))) checkText(*text);
  if (const auto window = checker::parseWindowFile(textOf(bytes))) {
    const auto written = checker::formatWindowFile(*window);
    require(written && *written == textOf(bytes), "only what we would write is accepted");
  }
}

}  // namespace quorvane::fuzz
