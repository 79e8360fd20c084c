// The files that completion reads: JSON of any shape, and snapshots whose sums are right and whose
// arrays are anything, and word lists. What the first start answers, a start from the snapshot
// answers, too.

#include <string>
#include <vector>

#include "fuzz/Target.h"
#include "hosts/memory/MemoryHost.h"
#include "src/completion/ConversionEngine.h"
#include "src/completion/WordTable_Layout.h"

namespace quorvane::fuzz {
namespace {

using Words = std::vector<std::u16string>;

constexpr std::size_t kMostCandidates = 51;
constexpr std::size_t kLongestInput = 1 << 20;

Words answers(memory::MemoryHost& host) {
  Instance instance(host.platform());
  ConversionEngine& engine = ConversionEngine::sharedEngine(instance);
  Words all;
  for (const auto* const typed : {u"t", u"TH", u"zzzz"}) {
    const Words list = engine.getCandidates(typed);
    require(!list.empty() && list.front() == typed, "the typed text stands first");
    require(list.size() <= kMostCandidates, "a list is cut");
    all.insert(all.end(), list.begin(), list.end());
  }
  all.push_back(engine.getAnnotation(u"that"));
  return all;
}

void checkFiles(Input input) {
  memory::MemoryHost host;
  host.bundle.put("phonex.js", "function phonex(word) { return word[0]; }");
  const std::size_t which = input.below(5);
  const std::string content(textOf(input.take(SIZE_MAX)));
  if (which == 0) host.bundle.put("frequency_and_ipa.json", content);
  if (which == 1) host.bundle.put("phonex_encoded_words.json", content);
  if (which == 2) host.files.put(host.files.homeDirectory + "/.you_expand_me.json", content);
  if (which == 3)
    host.files.put(host.files.cacheDirectory + "/frequency_and_ipa.snapshot", content);
  if (which == 4) host.bundle.put(memory::MemoryBundle::kWordList, content);
  try {
    const Words first = answers(host);
    require(answers(host) == first, "a snapshot answers as its files");
  } catch (const std::runtime_error&) {
    require(which == 4, "only a word list keeps it from starting");
  }
}

void checkSnapshot(Input input) {
  std::vector<Bytes> sections;
  for (int i = 0; i < 10; ++i) sections.push_back(input.take(input.half() % 2048));
  auto file = NewSnapshot(kWordTable, "key", sections).joined();
  try {
    const WordTable table(std::move(file), "key");
    static_cast<void>(table.ranked());
    for (const auto* const word : {"", "t", "that"}) {
      require(table.firstWithPrefix(word).size() <= WordTable::kMost, "a list is cut");
      static_cast<void>(table.frequency(word));
      table.annotation(word).forEach(
          [](std::string_view text) { require(text.size() < kLongestInput, "a text ends"); });
    }
  } catch (const DamagedSnapshot&) {
  }  // noticed
}

}  // namespace

void run(Bytes bytes) {
  Input input(bytes);
  if (input.flag()) {
    checkSnapshot(input);
  } else {
    checkFiles(input);
  }
}

}  // namespace quorvane::fuzz
