#pragma once
// The shared segments that a main application makes, each as large as it makes it.

#include <array>
#include <cstddef>
#include <cstdint>

namespace quorvane::checker {

struct SegmentRow {
  std::uint32_t key;
  std::size_t size;  ///< bytes
};
inline constexpr SegmentRow kToolSegment{880, 376};
inline constexpr SegmentRow kTextSegment{893, 400};
inline constexpr SegmentRow kCommandSegment{896, 408};
inline constexpr SegmentRow kMenuSegment{897, 384};
inline constexpr SegmentRow kSpellSegment{899, 708};
inline constexpr std::array kSegments{kToolSegment, kTextSegment, kCommandSegment, kMenuSegment,
                                      kSpellSegment};

}  // namespace quorvane::checker
