#pragma once
// The keys that type something, row by row from the top left, and what is printed on them.

#include <array>
#include <cstdint>
#include <string_view>

namespace quorvane::keyboard {

inline constexpr std::array<std::uint8_t, 48> kPrintedKeys{
    50, 18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27, 24,  // digits
    12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30, 42,  //
    0,  1,  2,  3,  5,  4,  38, 40, 37, 41, 39,          //
    6,  7,  8,  9,  11, 45, 46, 43, 47, 44, 49};

using Print = std::array<std::string_view, 2>;  ///< plain and shifted, in the order of the keys

inline constexpr Print kUSPrint{"`1234567890-=qwertyuiop[]\\asdfghjkl;'zxcvbnm,./ ",
                                "~!@#$%^&*()_+QWERTYUIOP{}|ASDFGHJKL:\"ZXCVBNM<>? "};
static_assert(kUSPrint[0].size() == kPrintedKeys.size());
static_assert(kUSPrint[1].size() == kPrintedKeys.size());

}  // namespace quorvane::keyboard
