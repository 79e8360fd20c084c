#pragma once

#include <filesystem>

#include "platform/Bundle.h"

namespace quorvane::desktop {

class Bundle final : public quorvane::Bundle {
 public:
  explicit Bundle(std::filesystem::path folder) : folder_(std::move(folder)) {}

  std::optional<std::string> pathForResource(std::string_view name, std::string_view type) override;

 private:
  std::filesystem::path folder_;
};

}  // namespace quorvane::desktop
