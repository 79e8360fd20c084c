#pragma once
// The tool record (segment 880) as the main application sees it: big-endian 32-bit words at byte
// offsets. Written from the wire formats, not from the input method's own accessors.

#include <cstddef>
#include <cstdint>
#include <span>

namespace quorvane::checker {

inline constexpr std::uint32_t kToolKey = 880;
inline constexpr std::size_t kToolRecordSize = 376;

/// Byte offsets. Field i of the array lies at 68 + 4 * i, entry i of a group at the group's base
/// + 4 * i.
enum class At : std::size_t {
  Requests = 72,            ///< field 1: set by the input method, cleared here
  InteractiveMode = 92,     ///< field 6
  AppInput = 104,           ///< field 9
  BufferChanged = 112,      ///< field 11
  WindowClient = 116,       ///< field 12
  AppState = 128,           ///< field 15
  StyleMark = 140,          ///< field 18: the style in force, from 1
  AutoTypeChoice = 164,     ///< field 24: the chosen file by its place, from 1
  ControlDigits = 168,      ///< field 25
  PopupChar = 172,          ///< field 26: a key for the popup, then our answer
  ClipState = 176,          ///< field 27
  TextPosition = 180,       ///< field 28
  WindowOpen = 192,         ///< field 31
  SessionHandle = 204,      ///< field 34
  SmartCharacters = 220,    ///< field 38
  AutoMark = 228,           ///< field 40
  CheckRunning = 232,       ///< field 41
  AppReady = 236,           ///< field 42
  MousePoint = 244,         ///< field 44
  StyleChoice = 252,        ///< field 46: from 1
  AppFlags = 264,           ///< field 49
  WindowTopLeft = 276,      ///< field 52
  WindowBottomRight = 280,  ///< field 53
  ScanFlags = 284,          ///< field 54
  PasteClient = 332,        ///< entry 5 of the group at 312
  SessionChange = 360,      ///< entry 4 of the group at 344
  SentenceStart = 364,      ///< entry 5 of the group at 344
};

inline constexpr std::uint32_t kSmartQuotesAndDashes = 3;   ///< in SmartCharacters: either on
inline constexpr std::uint32_t kScanBit = 1U << 16;         ///< in Requests and in ScanFlags
inline constexpr std::uint32_t kInteractiveSpelling = 0x2;  ///< in AppFlags
inline constexpr std::uint32_t kAbbreviations = 0x20;       ///< in AppFlags
inline constexpr std::uint32_t kWordCompletion = 0x40;      ///< in AppFlags
inline constexpr std::uint32_t kRestoreArmed = 1;           ///< in ClipState
inline constexpr std::uint32_t kTextOverflowed = 2;         ///< in SessionChange
inline constexpr std::uint32_t kTextCancelled = 3;          ///< in SessionChange

/// A view of somebody else's memory: each access is one load or store of the whole word, since the
/// other process writes at the same time. Offsets outside the record read 0 and take nothing.
class ToolRecord {
 public:
  explicit ToolRecord(std::span<std::uint32_t> words) : words_(words) {}

  [[nodiscard]] std::uint32_t get(At at) const;
  void put(At at, std::uint32_t value) const;
  /// Leaves every other bit as it is, also one that the other side sets at this moment.
  void clearBits(At at, std::uint32_t mask) const;

 private:
  [[nodiscard]] std::uint32_t* word(At at) const;
  std::span<std::uint32_t> words_;
};

}  // namespace quorvane::checker
