// The stand-in's own window: its port, its file, and the commands that open it.

#include "src/base/HostWords.h"
#include "src/base/Log.h"
#include "tools/checker/Checker.h"
#include "tools/checker/WindowFile.h"

namespace quorvane::checker {

namespace {

constexpr std::uint32_t kRestoreClipboardCommand = 16390;
constexpr std::size_t kFrontSignatureOfLast = 12;

/// The first word of a text.
std::u16string_view firstWord(std::u16string_view text) {
  constexpr std::u16string_view kAround = u" \t\r\n.,;:!?()[]\"\u201C\u201D\u2018\u2026";
  text.remove_prefix(std::min(text.find_first_not_of(kAround), text.size()));
  return text.substr(0, text.find_first_of(kAround));
}

}  // namespace

void Checker::prepareWindow() {
  const ToolRecord tool(segments_.tool);
  Clock& clock = instance_.platform().clock;
  clipboardLoan_.emplace(tool, clipboard_, clock);
  window_.emplace(MainWindow::Parts{tool, corrections_ ? &*corrections_ : nullptr, clock,
                                    *inputMethod_, *clipboardLoan_,
                                    [this](std::u16string_view text) { return define(text); },
                                    [this](const WindowText* text) { return tellOfWindow(text); }});
  serveWindowKeys();
}

void Checker::serveWindowKeys() {
  const auto port = instance_.platform().messagePorts.CFMessagePortCreateLocal(
      kWindowKeyPort, [this](std::int32_t key, const CFData* /*data*/) -> std::optional<CFData> {
        if (window_) window_->press(static_cast<char32_t>(key));
        return std::nullopt;
      });
  if (port == nullptr) {
    Log(instance_, "* checker: the window's keys can't be served");
    return;
  }
  servePort(port);
}

bool Checker::tellOfWindow(const WindowText* text) {
  if (text == nullptr) {
    removeWindowFile(runtimeFolder_);
    Log(instance_, "* checker: window closed");
    return true;
  }
  const bool isWritten = writeWindowFile(runtimeFolder_, *text);
  if (!isWritten) Log(instance_, "* checker: the window can't be shown");
  return isWritten;
}

bool Checker::performInWindow(std::uint32_t command) {
  if (command == kRestoreClipboardCommand) {
    const bool checkWontCome = clipboardLoan_->giveBack();
    if (checkWontCome) ToolRecord(segments_.tool).put(At::AutoMark, 0);
    return true;
  }
  return window_->obey(command, clientOfCommand());
}

/// Signature of the application that was in front.
std::uint32_t Checker::clientOfCommand() const {
  return messageClient_.value_or(hostWord32(segments_.command, kFrontSignatureOfLast));
}

/// Word data is mapped, not read: opening it takes about as long as one look-up.
std::u16string Checker::define(std::u16string_view text) {
  const std::u16string word(firstWord(text));
  if (!definitions_) definitions_ = Definitions::open(instance_);
  if (!definitions_) return u"There is no word data.";
  const std::u16string known = definitions_->of(word);
  return word + u"  " + (known.empty() ? u"\n\nThe word data doesn't know it." : known);
}

}  // namespace quorvane::checker
