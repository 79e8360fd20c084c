#pragma once
// The bridge alone on the memory host, with the scripted main application on the other side.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/memory/MemoryHost.h"
#include "src/bridge/Presence.h"
#include "src/bridge/qorv_sharedmem_State.h"

namespace quorvane::test {

using Lines = std::vector<std::string>;

class BridgeTest : public ::testing::Test {
 protected:
  void launch() { app.launch(memory::Notice::Missed); }
  /// As the notifications leave it: looking for the main application then costs no call.
  void launchKnown() {
    launch();
    instance.state<PresenceState>().quorvane_psn = app.psn();
    instance.state<PresenceState>().frontapp_signature = "WRTR"_4cc;
    host.journal.clear();
  }
  [[nodiscard]] bool logged(std::string_view line) const {
    return std::find(host.log.lines.begin(), host.log.lines.end(), line) != host.log.lines.end();
  }
  std::uint8_t byteAt(std::size_t offset) {
    return host.sharedMemory.read(app.segment(880), offset, 1).at(0);
  }

  memory::MemoryHost host;
  memory::MemoryMainApplication& app = host.mainApplication;
  Instance instance{host.platform()};
};

}  // namespace quorvane::test
