#pragma once
// What a parameter file holds before anybody has changed it.

#include "tools/parameters/ParameterFile.h"

namespace quorvane::parameters {

/// A text field of ours. The bundle identifier is every input method's, so that the signature says
/// which it is.
struct OwnApplication {
  std::string_view name;
  FourCharCode signature = 0;
  std::string_view identifier;  ///< in its record: nobody bears it
  std::uint32_t usual = 0;      ///< its switches

  [[nodiscard]] KnownApplication application() const {
    return {signature, std::string(identifier)};
  }
};
inline constexpr OwnApplication kTypeApplication{"type", "QVTY"_4cc, "quorvane type", 0x11833};
inline constexpr OwnApplication kDeskApplication{"desk", "QVDK"_4cc, "quorvane desk", 0x11873};
inline constexpr std::array<const OwnApplication*, 2> kOwnApplications{&kTypeApplication,
                                                                       &kDeskApplication};

/// Null where it is none of ours.
const OwnApplication* ownApplication(FourCharCode signature);

/// Adds what is missing: shortcuts, and the switches of our text fields, each where the file has no
/// resource of them. False: all was as it should be.
bool addUsual(ResourceFork& file);

}  // namespace quorvane::parameters
