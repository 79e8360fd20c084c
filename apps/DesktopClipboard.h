#pragma once
// The clipboard of text fields that other processes share.

#include "apps/Utf8Input.h"
#include "hosts/desktop/ClipboardFile.h"
#include "hosts/field/Clipboard.h"
#include "src/base/Text.h"

namespace quorvane {

class DesktopClipboard final : public field::Clipboard {
 public:
  DesktopClipboard(const std::filesystem::path& runtimeFolder, LogSink& log)
      : file_(runtimeFolder, log) {}

  /// Bytes that are no UTF-8 come as U+FFFD.
  [[nodiscard]] std::u16string text() const override { return decoded(file_.text()); }
  std::u16string takeForCommand() override { return decoded(file_.takeLent()); }
  bool copy(std::u16string_view text, field::CopiedFor whom) override {
    const std::string bytes = toUtf8(text);
    return whom == field::CopiedFor::Command ? file_.copyForCommand(bytes) : file_.copy(bytes);
  }

 private:
  static std::u16string decoded(const std::optional<std::string>& bytes) {
    return toUtf16(decodeUtf8Leniently(bytes.value_or(std::string())));
  }

  desktop::ClipboardFile file_;
};

}  // namespace quorvane
