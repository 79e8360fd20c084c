#pragma once
// What the benchmarks of word completion share.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/desktop/DesktopHost.h"
#include "hosts/field/FieldParts.h"
#include "src/completion/ConversionEngine.h"

namespace quorvane::bench {

using Words = std::vector<std::u16string>;

inline const std::filesystem::path kData = QUORVANE_SOURCE_DIR "/build/data";

inline std::u16string wide(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

/// The desktop host, and an engine that can be started again and again.
class Engine {
 public:
  Engine() { host_.log().enabled = false; }

  ConversionEngine& restart() {
    instance_.emplace(host_.platform());
    return ConversionEngine::sharedEngine(*instance_);
  }
  ConversionEngine& get() {
    return instance_ ? ConversionEngine::sharedEngine(*instance_) : restart();
  }
  Platform platform() { return host_.platform(); }
  void removeSnapshots() {
    std::filesystem::remove_all(host_.platform().fileManager.cachesDirectory());
  }

 private:
  field::FieldParts nowhere_;
  desktop::DesktopHost host_{desktop::DesktopConfiguration::fromEnvironment(),
                             nowhere_.forPlatform()};
  std::optional<Instance> instance_;
};

/// The one engine of all benchmarks.
inline Engine& engine() {
  static Engine instance;
  return instance;
}

template <class Function, class... Arguments>
void add(const char* name, Function function, const Arguments&... arguments) {
  benchmark::RegisterBenchmark(name, function, arguments...)->Repetitions(15)->MinTime(0.1);
}

}  // namespace quorvane::bench
