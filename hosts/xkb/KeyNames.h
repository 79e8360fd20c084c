#pragma once
// The keys that type something, by their XKB names, with the platform's virtual key codes of an
// ANSI keyboard.

#include <array>
#include <cstdint>

namespace quorvane::xkb {

struct KeyName {
  const char* name;
  std::uint8_t keyCode;
  bool keypad = false;  ///< types the same whatever modifiers are held
};

inline constexpr std::array<KeyName, 67> kKeyNames{{
    {"TLDE", 50},       {"AE01", 18},       {"AE02", 19},       {"AE03", 20},
    {"AE04", 21},       {"AE05", 23},       {"AE06", 22},       {"AE07", 26},
    {"AE08", 28},       {"AE09", 25},       {"AE10", 29},       {"AE11", 27},
    {"AE12", 24},       {"AE13", 93},       {"AD01", 12},       {"AD02", 13},
    {"AD03", 14},       {"AD04", 15},       {"AD05", 17},       {"AD06", 16},
    {"AD07", 32},       {"AD08", 34},       {"AD09", 31},       {"AD10", 35},
    {"AD11", 33},       {"AD12", 30},       {"BKSL", 42},       {"AC01", 0},
    {"AC02", 1},        {"AC03", 2},        {"AC04", 3},        {"AC05", 5},
    {"AC06", 4},        {"AC07", 38},       {"AC08", 40},       {"AC09", 37},
    {"AC10", 41},       {"AC11", 39},       {"LSGT", 10},       {"AB01", 6},
    {"AB02", 7},        {"AB03", 8},        {"AB04", 9},        {"AB05", 11},
    {"AB06", 45},       {"AB07", 46},       {"AB08", 43},       {"AB09", 47},
    {"AB10", 44},       {"AB11", 94},       {"SPCE", 49},       {"KP0", 82, true},
    {"KP1", 83, true},  {"KP2", 84, true},  {"KP3", 85, true},  {"KP4", 86, true},
    {"KP5", 87, true},  {"KP6", 88, true},  {"KP7", 89, true},  {"KP8", 91, true},
    {"KP9", 92, true},  {"KPDL", 65, true}, {"KPMU", 67, true}, {"KPAD", 69, true},
    {"KPDV", 75, true}, {"KPSU", 78, true}, {"KPEQ", 81, true},
}};

}  // namespace quorvane::xkb
