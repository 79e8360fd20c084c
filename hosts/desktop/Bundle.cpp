#include "hosts/desktop/Bundle.h"

namespace quorvane::desktop {

std::optional<std::string> Bundle::pathForResource(std::string_view name, std::string_view type) {
  const auto path = folder_ / std::string(name).append(".").append(type);
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return {};
  return path.string();
}

}  // namespace quorvane::desktop
