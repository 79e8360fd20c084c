#pragma once
// What the user permits: the file `consent` in the settings folder.
//
//   [automation]
//   636f6d2e74616c6c6f776d6572652e71756f7276616e65=permit
//
// or deny; absent: nobody has been asked. The name is the bundle identifier, each byte in two
// hexadecimal digits, since it may hold what a settings file gives a meaning.

#include <filesystem>
#include <optional>
#include <string>

#include "platform/LogSink.h"

namespace quorvane::desktop {

enum class Consent { Permit, Deny };

class ConsentFile {
 public:
  ConsentFile(std::filesystem::path file, quorvane::LogSink& log)
      : file_(std::move(file)), log_(log) {}

  /// Of an application by its bundle identifier, as the file has it now. None: absent, or another
  /// word stands there.
  [[nodiscard]] std::optional<Consent> of(const std::string& bundleIdentifier) const;
  /// A failure is logged.
  void set(const std::string& bundleIdentifier, Consent consent) const;

 private:
  std::filesystem::path file_;
  quorvane::LogSink& log_;
};

}  // namespace quorvane::desktop
