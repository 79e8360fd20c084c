#pragma once
// What keeps one `type` or `desk` apart from every other: a runtime folder, shared-memory keys of
// its own and, where it is asked for, application support.

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include "hosts/desktop/KeyOffset.h"

namespace quorvane {

/// The kinds of folders that runs have: "type-4711" is a runtime folder.
inline constexpr std::array<std::string_view, 3> kRunKinds{"type", "data", "applications"};

/// The process id in the name of a run's folder of this kind; none in any other name.
std::optional<std::int32_t> pidOfRun(std::string_view folderName,
                                     std::string_view kind = kRunKinds[0]);

/// Sets $QUORVANE_RUNTIME_DIR and $QUORVANE_KEY_OFFSET for this process and its children, each
/// unless it is set already, and clears away what dead ones left.
class OwnSurroundings {
 public:
  /// `ownData`: sets $QUORVANE_DATA_DIR, too. Throws std::runtime_error where the folder can't be
  /// used.
  explicit OwnSurroundings(bool ownData);
  ~OwnSurroundings() { remove(); }
  OwnSurroundings(const OwnSurroundings&) = delete;
  OwnSurroundings& operator=(const OwnSurroundings&) = delete;

  /// Application support as it is without us.
  [[nodiscard]] const std::filesystem::path& usersData() const { return usersData_; }
  /// A folder for the run's own applications; need not exist.
  [[nodiscard]] const std::filesystem::path& applications() const { return applicationsFolder_; }
  /// Removes what was made here, and that. Doing it twice does no harm.
  void remove();

 private:
  void makeFolder();
  void makeDataFolder();

  std::filesystem::path usersData_;
  std::filesystem::path folder_;      ///< empty: it isn't ours
  std::filesystem::path dataFolder_;  ///< likewise
  std::filesystem::path applicationsFolder_;
  std::uint32_t keyOffset_ = 0;  ///< 0: not ours
};

}  // namespace quorvane
