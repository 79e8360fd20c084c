// Statements about word completion: its data and switches, what is picked in the candidates
// panel, and what panel and annotation window show.

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

#include "src/completion/InputController.h"
#include "tools/scenario/World.h"

namespace quorvane::scenario {
namespace {

// Before the start: the data files, and the switches that the panel is made by.

void setWords(World& world, const Arguments& is) {
  CompletionData& data = world.completionData;
  data.list = split(toBytes(is[0].text), ' ');
  auto frequency = static_cast<std::int64_t>(data.list.size());
  for (const std::string& word : data.list) data.entries[word].frequency = frequency--;
  data.writeWords(world.host);
}
void setMeaning(World& world, const Arguments& is) {
  CompletionData& data = world.completionData;
  data.entries[toBytes(is[0].text)].translation = split(toBytes(is[1].text), '\n');
  data.writeWords(world.host);
}
void setPronunciation(World& world, const Arguments& is) {
  world.completionData.entries[toBytes(is[0].text)].ipa = toBytes(is[1].text);
  world.completionData.writeWords(world.host);
}
void setSoundCode(World& world, const Arguments& is) {
  world.completionData.sounding[toBytes(is[0].text)] = split(toBytes(is[1].text), ' ');
  world.completionData.writeSoundCodes(world.host);
}
void setExpansion(World& world, const Arguments& is) {
  world.completionData.expansions[toBytes(is[0].text)] = toBytes(is[1].text);
  world.completionData.writeExpansions(world.host);
}
void setGuesses(World& world, const Arguments& is) {
  auto& guesses = world.host.spellChecker.guesses[toUtf16(is[0].text)];
  guesses = split(toUtf16(is[1].text), u' ');
}
constexpr std::string_view kDataFiles =
    "google_227800_words.bin frequency_and_ipa.json phonex_encoded_words.json phonex.js";

void removeFile(World& world, const Arguments& is) {
  choose(is[0].word, kDataFiles);
  world.host.bundle.remove(is[0].word);
}
void writeFile(World& world, const Arguments& is) {
  if (is[0].word == ".you_expand_me.json") {
    world.host.files.put(userFile(world.host), toBytes(is[1].text));
  } else {
    choose(is[0].word, kDataFiles);
    world.host.bundle.put(is[0].word, toBytes(is[1].text));
  }
}
void setSwitch(World& world, const Arguments& is) {
  world.mustNotHaveStarted();
  const std::array<bool parameters::CompletionFlags::*, 3> flags{
      &parameters::CompletionFlags::withSpace, &parameters::CompletionFlags::vertical,
      &parameters::CompletionFlags::shiftToggle};
  world.completionFlags.*flags[choose(is[0].word, "space vertical shift-toggle")] = true;
  parameters::changeParameterFile(
      world.host.files, [&](auto& file) { setCompletionFlags(file, world.completionFlags); });
}

// Acts.

field::CandidatesPanel& panelOf(World& world) {
  auto* const panel = world.host.inputMethodKit.panel();
  if (panel == nullptr) throw BadStatement("there is no candidates panel yet");
  return *panel;
}
void pick(World& world, const Arguments& is) {
  const auto& list = panelOf(world).candidates();
  const auto found = std::find(list.begin(), list.end(), toUtf16(is[0].text));
  world.expect(found != list.end(), "candidate " + describe(is[0].text), "none");
  panelOf(world).pick(static_cast<std::size_t>(found - list.begin()));
  world.settle();
}
void cancelCompletion(World& world, const Arguments& /*is*/) {
  CancelAutoCompleteSession(world.instance);
}
void switchOffCompletion(World& world, const Arguments& /*is*/) {
  Cancel_AutoCompleteSession_withoutspace(world.instance);
}

// What panel and annotation window show.

std::string show(const field::CandidatesPanel& panel) {
  if (!panel.isVisible()) return "hidden";
  std::string shown;
  for (std::size_t i = 0; i < panel.candidates().size(); ++i) {
    const std::string candidate = describe(literalFromUtf16(panel.candidates()[i]));
    shown += (i == 0 ? "" : ", ");
    shown += panel.highlighted() == i ? '[' + candidate + ']' : candidate;
  }
  return shown;
}
void expectPanel(World& world, const Arguments& is) {
  world.expectEqual(describe(is[0].text), show(panelOf(world)));
}
void expectPanelHidden(World& world, const Arguments& /*is*/) {
  world.expectEqual("hidden", show(panelOf(world)));
}

std::string show(const std::string& text, NSPoint topLeft) {
  std::ostringstream shown;
  shown << text << " at " << topLeft.x << ' ' << topLeft.y;
  return shown.str();
}
std::string show(const field::AnnotationWindow& window) {
  if (window.alpha() == 0) return "hidden";
  if (window.alpha() != 1) return "half transparent";
  return show(describe(literalFromUtf16(window.text())), window.topLeft());
}
void expectAnnotation(World& world, const Arguments& is) {
  world.expectEqual(show(describe(is[0].text), {is[1].measure, is[2].measure}),
                    show(world.host.application.annotationWindow));
}
void expectNoAnnotation(World& world, const Arguments& /*is*/) {
  world.expectEqual("hidden", show(world.host.application.annotationWindow));
}

constexpr Pattern kStagePatterns[] = {
    {"words TEXT", setWords},
    {"word TEXT means TEXT", setMeaning},
    {"word TEXT is pronounced TEXT", setPronunciation},
    {"sound code TEXT holds TEXT", setSoundCode},
    {"spelling guesses for TEXT are TEXT", setGuesses},
    {"user expands TEXT to TEXT", setExpansion},
    {"data file TEXT is missing", removeFile},
    {"data file TEXT holds TEXT", writeFile},
    {"completion with NAME", setSwitch},
};

constexpr Pattern kCompletion[] = {
    {"pick TEXT", pick},
    {"completion is cancelled", cancelCompletion},
    {"completion is switched off", switchOffCompletion},
    {"expect panel TEXT", expectPanel},
    {"expect panel hidden", expectPanelHidden},
    {"expect annotation TEXT at MEASURE MEASURE", expectAnnotation},
    {"expect annotation hidden", expectNoAnnotation},
};

}  // namespace

std::span<const Pattern> completionStagePatterns() { return kStagePatterns; }
std::span<const Pattern> completionPatterns() { return kCompletion; }

}  // namespace quorvane::scenario
