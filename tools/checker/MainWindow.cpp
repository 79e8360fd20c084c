#include "tools/checker/MainWindow.h"

#include <algorithm>
#include <array>
#include <utility>

#include "src/base/Text.h"
#include "tools/checker/PasteInto.h"
#include "tools/checker/documents/CheckWindow.h"
#include "tools/checker/documents/PlainTexts.h"
#include "tools/checker/documents/Statistics.h"
#include "tools/checker/documents/TextWindow.h"

namespace quorvane::checker {

namespace {

constexpr std::uint64_t kSlice = 150'000;     // nanoseconds
constexpr std::uint32_t kMenuOffInFront = 1;  // in AppState

enum class About { Nothing, Copied, CheckOfCopied };

}  // namespace

struct MainWindow::Command {
  std::uint32_t number;
  About about;
  const char16_t* title;
  std::u16string_view text{};  ///< of a window about nothing
  CheckScope scope{};
  bool marks = false;
  std::vector<std::u16string> (*describe)(const Statistics&) = nullptr;
};

namespace {

std::vector<std::u16string> graphOf(const Statistics& statistics) {
  return drawSentenceLengths(statistics, kWindowColumns);
}

}  // namespace

bool MainWindow::obey(std::uint32_t number, std::uint32_t client) {
  static const std::array kCommands{
      Command{2, About::CheckOfCopied, u"Check All"},
      Command{6, About::CheckOfCopied, u"Check Spelling", {}, {true, false}},
      Command{7, About::CheckOfCopied, u"Check Grammar", {}, {false, true}},
      Command{45, About::CheckOfCopied, u"Check All and Mark Up", {}, {}, true},
      Command{25, About::Copied, u"Statistics", {}, {}, false, describeStatistics},
      Command{26, About::Copied, u"Words in Each Sentence", {}, {}, false, graphOf},
      Command{35, About::Copied, u"Dictionary"},
      Command{37, About::Copied, u"Dictionary"},
      Command{32, About::Nothing, u"Writing Rules", kWritingRules},
      Command{33, About::Nothing, u"Preferences", kPreferences},
      Command{64, About::Nothing, u"About Quorvane", kAbout},
      Command{65, About::Nothing, u"Help", kHelp},
  };
  const auto* const command = std::ranges::find(kCommands, number, &Command::number);
  if (command == kCommands.end()) return false;
  close();
  if (command->marks) parts_.tool.put(At::AutoMark, 0);
  open(windowFor(*command), client);
  return true;
}

std::unique_ptr<Window> MainWindow::windowFor(const Command& command) {
  if (command.about == About::Nothing) {
    return std::make_unique<TextWindow>(command.title, command.text);
  }
  const auto copied = parts_.clipboard.takeCopied();
  if (!copied) return std::make_unique<TextWindow>(command.title, kNothingCopied);
  return windowAbout(command, *copied);
}

std::unique_ptr<Window> MainWindow::windowAbout(const Command& command, const std::string& utf8) {
  auto text = readDocumentText(utf8);
  if (!text) return std::make_unique<TextWindow>(command.title, kNoText);
  if (command.describe != nullptr) {
    return std::make_unique<TextWindow>(command.title, command.describe(statisticsOf(text->units)));
  }
  if (command.about == About::Copied) {
    return std::make_unique<TextWindow>(command.title, parts_.definition(text->units));
  }
  if (parts_.choice == nullptr) {
    return std::make_unique<TextWindow>(command.title, kNoDictionary);
  }
  DocumentCheck check(std::move(*text), *parts_.choice, command.scope);
  return std::make_unique<CheckWindow>(command.title, std::move(check), command.marks);
}

/// That the keys are ours comes last: who sees it finds the window in its place.
void MainWindow::open(std::unique_ptr<Window> window, std::uint32_t client) {
  window_ = std::move(window);
  client_ = client;
  if (!show()) return;
  parts_.tool.put(At::PasteClient, client);
  parts_.tool.put(At::CheckRunning, window_->checks() ? 1 : 0);
  parts_.tool.put(At::AppState, parts_.tool.get(At::AppState) | kMenuOffInFront);
  parts_.tool.put(At::AppInput, 1);
}

void MainWindow::close() {
  if (!window_) return;
  window_.reset();
  shown_.reset();
  parts_.tool.put(At::AppInput, 0);
  parts_.tool.put(At::AppState, parts_.tool.get(At::AppState) & ~kMenuOffInFront);
  parts_.tool.put(At::CheckRunning, 0);
  if (parts_.tell) parts_.tell(nullptr);
}

bool MainWindow::poll() {
  const bool gaveBack = parts_.clipboard.poll();
  if (window_ && parts_.tool.get(At::AppInput) == 0) close();  // the client has taken the keys back
  if (!window_ || !window_->work()) return gaveBack;
  const std::uint64_t start = parts_.clock.mach_absolute_time();
  while (parts_.clock.mach_absolute_time() - start < kSlice && window_->work()) continue;
  show();
  return true;
}

void MainWindow::press(char32_t key) {
  if (window_ && parts_.tool.get(At::AppInput) == 0) close();  // it comes too late
  if (!window_) return;
  const WindowOutcome outcome = window_->press(key);
  if (outcome == WindowOutcome::StaysOpen) return void(show());
  const std::u16string text =
      outcome == WindowOutcome::Pastes ? window_->textToPaste() : std::u16string();
  close();
  if (outcome == WindowOutcome::Pastes) paste(text);
}

bool MainWindow::show() {
  WindowText text = window_->shown();
  if (shown_ == text) return true;
  const bool isSeen = !parts_.tell || parts_.tell(&text);
  if (!isSeen) close();
  if (isSeen) shown_ = std::move(text);
  return isSeen;
}

/// The client has the keys again by now.
void MainWindow::paste(const std::u16string& text) {
  const std::int32_t client = parts_.port.processOf(client_);
  if (pasteInto(client, toUtf8(text), parts_.clipboard, parts_.port)) return;
  open(std::make_unique<TextWindow>(u"Nothing was pasted", kNotPasted), client_);
}

}  // namespace quorvane::checker
