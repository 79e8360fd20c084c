#pragma once
// What a running input method tells of itself: numbers, and what the application in front is
// called; nothing of what was typed. It lies in the file PID.status of the runtime folder, mode
// 0600: a head of 16 bytes, a count of writings (odd while one is under way), then the record, all
// in the machine's own byte order. Writing makes no system call, reading disturbs nobody.

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

namespace quorvane::desktop {

/// What the text field that has the focus is to the input method.
enum class FieldKind : std::uint64_t {
  Own,     ///< of this process
  None,    ///< no client has the focus
  Told,    ///< a client's, which tells its text
  Untold,  ///< a client's, which doesn't
  Secret   ///< a client's, which is passed by
};

struct InputMethodStatus {
  /// Upper bounds of all groups of times but the last, in microseconds.
  static constexpr std::array<std::uint64_t, 7> kTimeBounds{50,     200,    1'000,  5'000,
                                                            20'000, 50'000, 100'000};

  std::uint64_t keyOffset = 0;  ///< of its shared segments
  std::uint64_t keys = 0;       ///< pressed
  std::uint64_t passed = 0;
  std::uint64_t consumed = 0;
  std::array<std::uint64_t, kTimeBounds.size() + 1> times{};  ///< keys, by how long each took
  std::uint64_t fixes = 0;                                    ///< put into the document
  std::array<std::uint64_t, 6> dropped{};                     ///< fixes, by the reason
  std::uint64_t lastFixLength = 0;                            ///< UTF-16 units
  std::uint64_t lastFixMicroseconds = 0;                      ///< since the key before it
  std::uint64_t frontProcess = 0;                             ///< 0: none
  std::uint64_t switches = 0;                                 ///< of the application in front
  std::array<char, 64> frontApplication{};                    ///< its bundle identifier, ended by 0
  FieldKind field = FieldKind::Own;                           ///< that has the focus
  std::array<std::uint64_t, 6> editsLeftOut{};                ///< of clients' texts, by the reason

  [[nodiscard]] std::string_view frontName() const;
};

struct MappedStatus;

class StatusFile {
 public:
  /// Made anew; files of processes that have died go. Where it can't be had, everything that is
  /// written is forgotten.
  StatusFile(const std::filesystem::path& runtimeFolder, std::int32_t pid);
  ~StatusFile();
  StatusFile(const StatusFile&) = delete;
  StatusFile& operator=(const StatusFile&) = delete;

  void write(const InputMethodStatus& status);

 private:
  std::filesystem::path path_;
  MappedStatus* mapped_ = nullptr;
};

/// "4711.status".
std::filesystem::path statusFileOf(const std::filesystem::path& runtimeFolder, std::int32_t pid);
/// The process id in such a name; none for any other name.
std::optional<std::int32_t> pidOfStatusFile(std::string_view fileName);
/// None where there is none, or it is no such file, or is never whole.
std::optional<InputMethodStatus> readStatusFile(const std::filesystem::path& path);

}  // namespace quorvane::desktop
