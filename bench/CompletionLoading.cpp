// The start of the engine, beside the bare walk through the JSON files.

#include <malloc.h>
#include <simdjson.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <functional>

#include "bench/Completion.h"
#include "bench/CompletionEngine.h"
#include "bench/Peer.h"

namespace quorvane::bench {
namespace {

std::size_t lengths(simdjson::ondemand::value value) {
  using Type = simdjson::ondemand::json_type;
  std::size_t total = 0;
  switch (value.type()) {
    case Type::object:
      for (auto field : value.get_object()) {
        total += std::string_view(field.unescaped_key()).size() + lengths(field.value());
      }
      return total;
    case Type::array:
      for (auto element : value.get_array()) total += lengths(element.value());
      return total;
    case Type::string:
      return std::string_view(value.get_string()).size();
    default:
      return static_cast<std::size_t>(value.get_int64());
  }
}

/// A file read, and each of its texts and numbers touched once.
std::size_t walk(const std::filesystem::path& file) {
  const simdjson::padded_string json = simdjson::padded_string::load(file.string());
  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document = parser.iterate(json);
  std::size_t total = 0;
  for (auto field : document.get_object()) {
    total += std::string_view(field.unescaped_key()).size() + lengths(field.value());
  }
  return total;
}

/// What `body` gives in a process of its own.
double inOwnProcess(const std::function<double()>& body) {
  int ends[2];
  if (::pipe(ends) != 0) std::abort();
  const Child child([&] {
    const double result = body();
    if (::write(ends[1], &result, sizeof(result)) < 0) std::abort();
  });
  double result = 0;
  if (::read(ends[0], &result, sizeof(result)) != sizeof(result)) std::abort();
  ::close(ends[0]);
  ::close(ends[1]);
  return result;
}

/// Each start finds the memory of a new process: what was used before would be cheaper.
void forgetMemory(benchmark::State& state) {
  state.PauseTiming();
  malloc_trim(0);
  state.ResumeTiming();
}

void bareWalk(benchmark::State& state) {
  for (auto step : state) {
    forgetMemory(state);
    benchmark::DoNotOptimize(walk(kData / "frequency_and_ipa.json"));
    benchmark::DoNotOptimize(walk(kData / "phonex_encoded_words.json"));
  }
}

void jsonToReady(benchmark::State& state) {
  for (auto step : state) {
    state.PauseTiming();
    engine().removeSnapshots();
    state.ResumeTiming();
    forgetMemory(state);
    engine().restart();
  }
}

void firstCandidates() { benchmark::DoNotOptimize(engine().restart().getCandidates(u"th")); }

void snapshotToFirstCandidates(benchmark::State& state) {
  engine().restart();
  for (auto step : state) {
    forgetMemory(state);
    firstCandidates();
  }
}

/// How much memory of its own a start takes, in bytes.
double privateMemoryOfStart() {
  const auto own = [] {
    std::ifstream rollup("/proc/self/smaps_rollup");
    double kilobytes = 0;
    for (std::string name; rollup >> name;) {
      if (name == "Anonymous:") rollup >> kilobytes;
    }
    return kilobytes * 1024;
  };
  return inOwnProcess([&own] {
    const double before = own();
    firstCandidates();
    return own() - before;
  });
}

double memoryFromJson = 0;  // in bytes, measured before this process has filled its own
double memoryFromSnapshot = 0;

}  // namespace

void registerLoading() {
  engine().removeSnapshots();
  memoryFromJson = privateMemoryOfStart();
  memoryFromSnapshot = privateMemoryOfStart();
  add("bareWalk", bareWalk);
  add("jsonToReady", jsonToReady);
  add("snapshotToFirstCandidates", snapshotToFirstCandidates);
}

void printLoading(const Ratios& ratios) {
  ratios.print("json-to-ready", "jsonToReady", "bareWalk", 2.5);
  ratios.print("snapshot-to-first-candidates", "snapshotToFirstCandidates", "jsonToReady", 0.002);
  const auto json =
      static_cast<double>(std::filesystem::file_size(kData / "frequency_and_ipa.json"));
  Ratios::printValue("private-memory-from-json", memoryFromJson / json, 0.9);
  Ratios::printValue("private-memory-from-snapshot", memoryFromSnapshot / json, 0.9);
}

}  // namespace quorvane::bench
