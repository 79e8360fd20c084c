#pragma once
// The clipboard of all processes that meet in a runtime folder: the file `clipboard` there, UTF-8,
// mode 0600, at most 8 MiB, written whole and then renamed. A copy keeps beside it, as
// `clipboard.before`, what stood there until then, so that whoever had something copied for a
// purpose of its own can take that back.

#include <chrono>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/LogSink.h"

namespace quorvane::desktop {

inline constexpr std::size_t kClipboardLimit = 8 << 20;

class ClipboardFile {
 public:
  /// Tells one content from the next; equal where nobody has written in between.
  struct Edition {
    std::uint64_t file = 0;  ///< 0: there is none
    std::time_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const Edition&) const = default;
  };

  /// `log` outlives this.
  ClipboardFile(const std::filesystem::path& runtimeFolder, quorvane::LogSink& log)
      : file_(runtimeFolder / "clipboard"),
        before_(runtimeFolder / "clipboard.before"),
        kept_(runtimeFolder / "clipboard.kept"),
        log_(log) {}

  /// Bytes as they lie, which may be no UTF-8. None where there is nothing, or no such file.
  [[nodiscard]] std::optional<std::string> text() const;
  [[nodiscard]] Edition edition() const;
  /// How long ago it was written; none where there is nothing.
  [[nodiscard]] std::optional<std::chrono::nanoseconds> age() const;

  /// What a client does: the content until then is kept beside it. False, with a log line, where
  /// the text is too long or can't be written; the clipboard is then as before.
  bool copy(std::string_view text) { return replace(text, before_); }
  /// What the latest copy has kept stands again: also nothing, where nothing stood before.
  void takeBackCopy() { standAgain(before_); }

  /// For a paste: nobody's copy goes by it.
  bool lend(std::string_view text) { return replace(text, kept_); }
  /// What stood there before the text was lent stands again.
  void endLoan() { standAgain(kept_); }

 private:
  bool replace(std::string_view text, const std::filesystem::path& former);
  void standAgain(const std::filesystem::path& former);

  std::filesystem::path file_;
  std::filesystem::path before_;
  std::filesystem::path kept_;
  quorvane::LogSink& log_;
};

}  // namespace quorvane::desktop
