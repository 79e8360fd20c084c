#pragma once
// The parameter file for people, and for programs.

#include <string>

#include "tools/parameters/ParameterFile.h"

namespace quorvane {

/// Every resource of the file, in lines.
std::string settingsAsText(const parameters::ResourceFork& file);
/// The same as an object in JSON.
std::string settingsAsJSON(const parameters::ResourceFork& file);

/// `checking, spelling (10002)`: bits without a name are in the number alone.
std::string switchesText(std::uint32_t word);
/// Four characters; `\u0000` for those that can't be shown.
std::string codeText(FourCharCode code);

}  // namespace quorvane
