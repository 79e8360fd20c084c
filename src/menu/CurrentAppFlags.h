#pragma once
// The per-application switch word.

#include <cstdint>

namespace quorvane {

inline constexpr std::uint32_t kInteractiveMask = 0x73;  ///< any of these: the handler works at all
inline constexpr std::uint32_t kAutoCorrectFlag = 0x10;  ///< smart characters
inline constexpr std::uint32_t kCompletionFlag = 0x40;   ///< word completion
inline constexpr std::uint32_t kTextPositionFlag = 0x1000;  ///< publish the text position
inline constexpr std::uint32_t kInteractiveCheck =
    0x10000;  ///< master switch of interactive checking
inline constexpr std::uint32_t kDefaultAppFlags = 0x1800;  ///< an application not yet known

struct CurrentAppFlags {
  std::uint32_t CURRENTAPPFLAGSTATUS = kDefaultAppFlags;
};

}  // namespace quorvane
