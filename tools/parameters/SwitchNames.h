#pragma once
// What people call the switches of an application.

#include <array>
#include <cstdint>
#include <string_view>

namespace quorvane::parameters {

struct SwitchName {
  std::string_view name;
  std::uint32_t bit;
  std::string_view meaning;
};

inline constexpr std::array<SwitchName, 11> kSwitchNames{{
    {"checking", 0x10000, "text is checked as one types"},
    {"spelling", 0x2, "spelling is checked"},
    {"grammar", 0x1, "grammar is checked"},
    {"suggest-spelling", 0x8, "spellings are suggested"},
    {"suggest-grammar", 0x4, "grammar is suggested"},
    {"corrections", 0x10, "quotes, dashes and capitals are made smart"},
    {"abbreviations", 0x20, "abbreviations are expanded"},
    {"completion", 0x40, "words are completed"},
    {"windows", 0x1000, "windows stand at the text"},
    {"sound", 0x800, "mistakes are heard"},
    {"no-pencil-menu", 0x20000, "the Pencil Menu is off"},
}};

}  // namespace quorvane::parameters
