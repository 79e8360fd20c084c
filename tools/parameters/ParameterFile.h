#pragma once
// The parameter file as the main application writes it, whose half of it this is: see
// docs/wire-formats.md.

#include <string>

#include "hosts/resources/AppleDouble.h"
#include "hosts/resources/ResourceFork.h"

namespace quorvane::parameters {

/// Its place in the application support folder.
inline constexpr std::string_view kFolder = "Quorvane";
inline constexpr std::string_view kFile = "Quorvane Parameters";
/// What it is known by.
inline constexpr resources::FinderInfo kFinderInfo{"PREF"_4cc, "QVKT"_4cc};

struct Application {
  FourCharCode signature = "\?\?\?\?"_4cc;
  std::string bundleIdentifier;
};

/// A word of switches for one application, known by its signature or, without one, by its bundle
/// identifier.
void setSwitches(resources::ResourceFork& file, const Application& application, std::uint32_t word);

struct CompletionFlags {
  bool withSpace = false;    ///< a completed word brings a space along
  bool vertical = false;     ///< the candidates panel is a column
  bool shiftToggle = false;  ///< a tap of Shift turns completion off and on
};
void setCompletionFlags(resources::ResourceFork& file, CompletionFlags flags);

}  // namespace quorvane::parameters
