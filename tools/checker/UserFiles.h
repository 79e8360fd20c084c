#pragma once
// The user's files of words and of abbreviations, as the Input Menu lists them: see
// docs/wire-formats.md.

#include <filesystem>
#include <vector>

#include "platform/LogSink.h"
#include "platform/TextEncoding.h"

namespace quorvane::checker {

/// A larger one is passed over.
inline constexpr std::uint64_t kLargestUserFile = std::uint64_t{4} << 20;

enum class UserFileKind { Spelling, AutoType };

struct UserFile {
  std::filesystem::path path;
  bool on = false;
};

/// Below application support. It need not be there.
std::filesystem::path userFolder(const std::filesystem::path& support, UserFileKind kind);

/// By name, in the order of Mac OS Roman.
std::vector<UserFile> userFiles(const std::filesystem::path& support, UserFileKind kind,
                                TextEncoding& encoding);

/// So that a run of its own has them, too: those of at most 4 MiB. What can't be copied is left
/// out.
void copyUserFiles(const std::filesystem::path& from, const std::filesystem::path& to,
                   TextEncoding& encoding);

/// Throws std::runtime_error, with a message that names the file and the reason.
void switchUserFile(const std::filesystem::path& path, bool on);

/// Makes each folder that is missing, with a small file that is off. What can't be made is logged.
void makeUserFolders(const std::filesystem::path& support, quorvane::LogSink& log);

}  // namespace quorvane::checker
