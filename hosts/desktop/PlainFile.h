#pragma once
// Reading of files that must be plain ones, so that nothing blocks that bears a file's name.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "hosts/desktop/Descriptor.h"

namespace quorvane::desktop {

struct PlainFile {
  Descriptor
      file;  ///< not valid, with errno set: it is no plain file, too large, or can't be opened
  std::size_t size = 0;
};

/// Own: neither a link nor a file of another user is opened.
enum class Whose { Anybodys, Own };

PlainFile openPlainFile(const std::string& path, std::uint64_t largest,
                        Whose whose = Whose::Anybodys);
/// What the errno of a file that isn't opened means.
std::string refusalText(int error);

/// How much there was, at most `size` bytes; none, with errno set, on failure.
std::optional<std::size_t> readWhole(int file, std::uint8_t* out, std::size_t size);

/// The whole file; none, with errno set, where it can't be had.
std::optional<std::vector<std::uint8_t>> readPlainFile(const std::string& path,
                                                       std::uint64_t largest,
                                                       Whose whose = Whose::Anybodys);

}  // namespace quorvane::desktop
