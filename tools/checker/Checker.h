#pragma once
// The stand-in main application: creates the shared segments, serves the server port, answers
// scans, and says that it runs.

#include <array>
#include <filesystem>
#include <memory>
#include <optional>

#include "hosts/desktop/DesktopHost.h"
#include "hosts/desktop/WakeUp.h"
#include "src/base/Instance.h"
#include "tools/checker/CheckerOptions.h"
#include "tools/checker/ClipboardLoan.h"
#include "tools/checker/Conversation.h"
#include "tools/checker/Corrections.h"
#include "tools/checker/InputMethods.h"
#include "tools/checker/MainWindow.h"
#include "tools/checker/Scribbler.h"
#include "tools/checker/Spelling.h"
#include "tools/checker/Ticker.h"
#include "tools/checker/UserContent.h"
#include "tools/checker/WritingStyleMenu.h"
#include "tools/definitions/Definitions.h"

namespace quorvane::checker {

/// What the stand-in says of itself; also to be given to its host.
desktop::Announcement checkerAnnouncement();

class Checker {
 public:
  /// Starts in the order that the agreement lays down; the announcement comes last. `spelling`
  /// null: no dictionary. What the popup offers is told in the runtime folder, what has been taken
  /// back is kept in the settings folder. Throws
  /// std::runtime_error where a main application runs already or a segment or the port can't be
  /// had. All that it does happens while the host's run loop runs.
  Checker(desktop::DesktopHost& host, const CheckerOptions& options,
          const desktop::DesktopConfiguration& configuration, std::unique_ptr<Spelling> spelling);
  ~Checker();
  Checker(const Checker&) = delete;
  Checker& operator=(const Checker&) = delete;

 private:
  struct Block;

  std::shared_ptr<CFMessagePort> takePort();
  void obey(std::uint32_t command, const CFData* data);
  void createSegments();
  Block createSegment(std::uint32_t key, std::size_t size, std::uint32_t slot);
  void servePort(const std::shared_ptr<CFMessagePort>& port);
  void trySpelling();
  void loadCorrections(const std::filesystem::path& configDirectory);
  void announce();
  void beginConversation();
  Listener listener();
  std::u16string units(const std::string& text);
  void logFix(const Fix& fix);
  void tellOfPopup(const PopupList* list);
  void offerStyles(const std::filesystem::path& configDirectory);
  void readUsersFiles(const std::filesystem::path& support);
  void insertDate(std::uint32_t command);
  void runTool(std::uint32_t command);
  void perform(std::uint32_t command);
  void prepareWindow();
  void serveWindowKeys();
  bool tellOfWindow(const WindowText* text);
  [[nodiscard]] std::uint32_t clientOfCommand() const;
  bool performInWindow(std::uint32_t command);
  std::u16string define(std::u16string_view text);
  void look();
  bool somebodyTypes();

  desktop::DesktopHost& host_;
  Instance instance_;
  CheckerOptions options_;
  std::filesystem::path runtimeFolder_;
  std::optional<UserContent> users_;
  std::uint64_t lastLookAtFiles_ = 0;
  std::unique_ptr<Spelling> spelling_;
  CorrectionSwitches correctionSwitches_;
  std::optional<Corrections> corrections_;
  std::optional<WritingStyleMenu> styles_;
  Segments segments_;
  std::span<std::uint8_t> menuBytes_;
  std::optional<DesktopInputMethodPort> inputMethod_;
  std::optional<Scribbler> scribbler_;
  desktop::ClipboardFile clipboard_;
  std::optional<ClipboardLoan> clipboardLoan_;
  std::optional<MainWindow> window_;
  std::optional<std::uint32_t> messageClient_;  ///< of the command message being obeyed
  std::unique_ptr<Definitions> definitions_;    ///< since the first look-up
  std::optional<Conversation> conversation_;
  std::unique_ptr<Registration> announcement_;
  std::optional<desktop::WakeUps> wakeUps_;
  bool textsBeganWithUs_ = false;
  std::optional<Ticker> ticker_;
  std::array<std::uint8_t, 8> lastExtent_{};  ///< cursor and length of the text published last
  std::uint64_t lastWork_ = 0;
};

/// All of `quorvane checker`, until SIGINT, SIGTERM or SIGHUP. Throws what kept it from starting.
void runChecker(const CheckerOptions& options);

}  // namespace quorvane::checker
