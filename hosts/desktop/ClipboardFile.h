#pragma once
// The clipboard of all processes that meet in a runtime folder: the file `clipboard` there, UTF-8,
// mode 0600, at most 8 MiB, written whole and then renamed. Two other files lie beside it for a
// while. `clipboard.before`: the clipboard is a command's copy, and this stood there until then;
// empty: nothing did. `clipboard.lent`: what a paste is to insert that hasn't come yet; the
// clipboard is lent for it as long as it is this very file, and what stood there lies in
// `clipboard.kept`, if anything did. Who writes holds a lock on the folder; one that isn't to be
// had within a few milliseconds is done without.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/desktop/Descriptor.h"
#include "platform/LogSink.h"

namespace quorvane::desktop {

inline constexpr std::size_t kClipboardLimit = 8 << 20;

class ClipboardFile {
 public:
  /// `log` outlives this.
  ClipboardFile(const std::filesystem::path& runtimeFolder, quorvane::LogSink& log)
      : folder_(runtimeFolder),
        file_(runtimeFolder / "clipboard"),
        before_(runtimeFolder / "clipboard.before"),
        lent_(runtimeFolder / "clipboard.lent"),
        kept_(runtimeFolder / "clipboard.kept"),
        log_(log) {}

  /// Bytes as they lie, which may be no UTF-8. None where there is nothing, or no such file.
  [[nodiscard]] std::optional<std::string> text() const;

  // Each of these that gives false has said why on the log, and the clipboard is as before.

  /// What a person does. It isn't any command's.
  bool copy(std::string_view text);
  /// What a command has a client do; what a person had copied is kept beside it. Empty: nothing was
  /// selected, and an earlier command's copy is taken back.
  bool copyForCommand(std::string_view text);
  /// What has been copied for a command, which is then gone from the clipboard: what stood there
  /// stands again. None where nothing has.
  std::optional<std::string> takeCommandsCopy();

  /// For a paste. A loan that hasn't ended ends first.
  bool lend(std::string_view text);
  /// What stood there before stands again, also below a copy for a command; not where a person has
  /// copied meanwhile. Without a loan nothing happens. A paste that comes late finds its text.
  void endLoan();
  /// What a paste is to insert that a command has asked for: the text that was lent for it,
  /// whatever the clipboard is by now. That ends the loan. Where none was lent, or a command has
  /// copied since, what is there.
  std::optional<std::string> takeLent();

 private:
  [[nodiscard]] Descriptor lock() const;
  bool put(std::string_view text);
  bool keepFor(const std::filesystem::path& former);
  void endLoanUnderLock();
  void standAgain(const std::filesystem::path& former);
  bool refuse(std::string_view reason);

  std::filesystem::path folder_;
  std::filesystem::path file_;
  std::filesystem::path before_;
  std::filesystem::path lent_;
  std::filesystem::path kept_;
  quorvane::LogSink& log_;
};

}  // namespace quorvane::desktop
