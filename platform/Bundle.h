#pragma once
// NSBundle mainBundle, and bundles by their identifiers: where the things lie that ship with them.

#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

class Bundle {
 public:
  virtual ~Bundle() = default;

  /// Full path of `name.type`; none where there is no such file.
  virtual std::optional<std::string> pathForResource(std::string_view name,
                                                     std::string_view type) = 0;
  /// The same in a folder of the bundle's resources, where `name.type` may be a folder itself.
  virtual std::optional<std::string> pathForResource(std::string_view name, std::string_view type,
                                                     std::string_view subdirectory) = 0;
  /// Path of the bundle with this identifier; none where it isn't loaded.
  virtual std::optional<std::string> CFBundleGetBundleWithIdentifier(
      std::string_view identifier) = 0;
  /// Path of its SharedSupport folder, which need not exist; none where it isn't loaded.
  virtual std::optional<std::string> CFBundleCopySharedSupportURL(std::string_view identifier) = 0;
  /// The same of the main bundle.
  virtual std::optional<std::string> CFBundleCopySharedSupportURL() = 0;
};

}  // namespace quorvane
