#pragma once

#include <string>

#include "hosts/desktop/DesktopConfiguration.h"

namespace quorvane {

/// With "~" in place of the home folder: the user's name isn't everybody's business.
inline std::string withoutHome(std::string text) {
  const std::string home = desktop::DesktopConfiguration::fromEnvironment().homeDirectory;
  if (home.size() < 2) return text;
  for (std::size_t at = text.find(home); at != std::string::npos; at = text.find(home, at + 1)) {
    text.replace(at, home.size(), "~");
  }
  return text;
}

}  // namespace quorvane
