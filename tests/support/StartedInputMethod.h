#pragma once
// The input method on the memory host, started as `main` starts it, with one focused document.

#include <span>
#include <string_view>

#include "hosts/memory/MemoryHost.h"
#include "src/completion/InputController.h"
#include "src/menu/CurrentAppFlags.h"
#include "src/session/QBIM_IMK_Sessions.h"
#include "src/session/QuorvaneInputController.h"
#include "src/shell/main.h"

namespace quorvane::test {

struct StartedInputMethod {
  /// `words`: of completion, where the usual ones won't do.
  explicit StartedInputMethod(bool withMainApplication = true,
                              std::span<const std::string_view> words = {}) {
    if (!words.empty()) host.bundle.setWordList(words);
    if (withMainApplication) host.mainApplication.launch(memory::Notice::Missed);
    host.mainApplication.answerScan({});
    InputMethodMain(instance, {});
    host.runPending();
    host.text.setController(&controller);
    host.processes.setFront(memory::MemoryProcesses::editor());
    host.runPending();
    instance.state<CurrentAppFlags>().CURRENTAPPFLAGSTATUS = 0x11833;
    host.text.focus(&document);
  }

  void type(std::string_view ascii) {
    for (const char character : ascii) host.text.type(static_cast<char32_t>(character));
  }
  void bringMainApplicationToFront() {
    host.processes.setFront(host.mainApplication.psn());
    host.runPending();
  }
  BIMSessionRec& session() { return *BIMGetActiveSession(instance); }
  std::string sessionText() {
    const auto& bytes = *session().sessionText;
    return {bytes.begin(), bytes.begin() + session().length};
  }

  memory::MemoryHost host;
  Instance instance{host.platform()};
  InputController controller{instance};
  field::Document& document = host.text.addDocument();
  field::Client& client = host.text.clientOf(document);
};

}  // namespace quorvane::test
