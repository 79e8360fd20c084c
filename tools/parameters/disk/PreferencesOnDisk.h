#pragma once
// The preferences file: where the main application lies, by the alias in its resource QLOC 128.

#include <filesystem>
#include <optional>

namespace quorvane::parameters {

// Both throw std::runtime_error, with a message that names the file and the reason.

/// None where the file says nothing of it; then application folders are searched.
std::optional<std::filesystem::path> chosenMainApplication(
    const std::filesystem::path& preferences);
/// None: forgets it. What else the file holds stays.
void chooseMainApplication(const std::filesystem::path& preferences,
                           const std::optional<std::filesystem::path>& application);

}  // namespace quorvane::parameters
