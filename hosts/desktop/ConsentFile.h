#pragma once
// What the user permits: the file `consent` in the settings folder.
//
//   [automation]
//   com.tallowmere.quorvane=permit          or deny; absent: nobody has been asked

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
