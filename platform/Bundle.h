#pragma once
// NSBundle mainBundle: where the resources lie that ship with the program.

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
};

}  // namespace quorvane
