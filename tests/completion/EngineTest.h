#pragma once
// An engine on the memory host.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "hosts/memory/MemoryHost.h"
#include "src/completion/ConversionEngine.h"

namespace quorvane::test {

struct EngineTest : testing::Test {
  using Words = std::vector<std::u16string>;

  /// A new process, over whatever the files hold by now.
  ConversionEngine& start() {
    instance.emplace(host.platform());
    return ConversionEngine::sharedEngine(*instance);
  }
  void putWords(std::string_view json) { host.bundle.put("frequency_and_ipa.json", json); }
  void putCodes(std::string_view json) { host.bundle.put("phonex_encoded_words.json", json); }
  void putScript(std::string_view script) { host.bundle.put("phonex.js", script); }
  void putUserFile(std::string_view json) {
    host.files.put(host.files.homeDirectory + "/.you_expand_me.json", json);
  }

  memory::MemoryHost host;
  std::optional<Instance> instance;
};

}  // namespace quorvane::test
