#pragma once

#include <filesystem>

#include "platform/Bundle.h"

namespace quorvane::desktop {

/// One folder holds the bundle's resources, and its folder SharedSupport among them.
class Bundle final : public quorvane::Bundle {
 public:
  Bundle(std::filesystem::path folder, std::string identifier)
      : folder_(std::move(folder)), identifier_(std::move(identifier)) {}

  std::optional<std::string> pathForResource(std::string_view name, std::string_view type) override;
  std::optional<std::string> pathForResource(std::string_view name, std::string_view type,
                                             std::string_view subdirectory) override;
  std::optional<std::string> CFBundleGetBundleWithIdentifier(std::string_view identifier) override;
  std::optional<std::string> CFBundleCopySharedSupportURL(std::string_view identifier) override;
  std::optional<std::string> CFBundleCopySharedSupportURL() override;

 private:
  std::filesystem::path folder_;
  std::string identifier_;
};

}  // namespace quorvane::desktop
